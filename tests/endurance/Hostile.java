// The arguments of one call of a native, as nobody should pass them, from one seed: null, of other classes or of
// subclasses, shared, inconsistent, with wrong lengths and counts. Left out are those that abort the process as
// documented (withinAssertions), those that Java itself does not allow, and output buffers of 2 GiB less one byte,
// whose allocation may succeed.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.lang.reflect.Array;
import java.lang.reflect.Field;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.lang.reflect.Proxy;
import java.util.*;
import java.util.concurrent.ConcurrentHashMap;
import java.util.function.LongSupplier;
import java.util.stream.Stream;

public final class Hostile {
    static final Method[] NATIVES = Stream.of(Cryptoki.class, CTUtil.class, CK_MECHANISM.class, CK.class)
            .flatMap(owner -> Stream.of(owner.getDeclaredMethods()))
            .filter(method -> Modifier.isNative(method.getModifiers()))
            .sorted(Comparator.comparing(Method::getName)).toArray(Method[]::new);

    // The classes that become a structure as the parameter of a mechanism. The first ones, in the order of WRITING,
    // are those into which mechanisms write results.
    private static final List<Class<?>> STRUCTURES = Arrays.asList(CK_PBE_PARAMS.class, CK_SSL3_KEY_MAT_PARAMS.class,
            CK_SSL3_MASTER_KEY_DERIVE_PARAMS.class, CK_KEY_WRAP_SET_OAEP_PARAMS.class,
            CK_PKCS12_PBE_IMPORT_PARAMS.class, CK_PKCS12_PBE_EXPORT_PARAMS.class, CK_RSA_PKCS_OAEP_PARAMS.class,
            CK_RSA_PKCS_PSS_PARAMS.class, CK_RC2_CBC_PARAMS.class, CK_RC2_MAC_GENERAL_PARAMS.class,
            CK_KEY_DERIVATION_STRING_DATA.class, CK_MECH_TYPE_AND_OBJECT.class, CK_DES_CBC_PARAMS.class,
            CK_DES2_CBC_PARAMS.class, CK_DES3_CBC_PARAMS.class, CK_PP_LOAD_SECRET_PARAMS.class,
            CK_TIMESTAMP_PARAMS.class, CK_REPLICATE_TOKEN_PARAMS.class, CK_SECRET_SHARE_PARAMS.class,
            CK_ECIES_PARAMS.class, CK_ECDH1_DERIVE_PARAMS.class, CK_VERSION.class, Long.class);
    private static final long[] WRITING = {CKM.PBE_SHA1_RC4_128, CKM.SSL3_KEY_AND_MAC_DERIVE,
        CKM.SSL3_MASTER_KEY_DERIVE, CKM.KEY_WRAP_SET_OAEP, CKM.PKCS12_PBE_IMPORT};

    // The classes of attribute values: those that are written back, and those that are only read or are refused.
    private static final Class<?>[] WRITABLE = {byte[].class, Long.class, Boolean.class, CK_BBOOL.class, CK_DATE.class,
        CK_OBJECT_HANDLE.class, CK_SESSION_HANDLE.class, CK_ATTRIBUTE_TYPE.class, CK_CERTIFICATE_TYPE.class,
        CK_HW_FEATURE_TYPE.class, CK_KEY_TYPE.class, CK_MECHANISM_TYPE.class, CK_MECHANISM_TYPE[].class,
        CK_OBJECT_CLASS.class, CK_RSA_PKCS_OAEP_SOURCE_TYPE.class, CK_RV.class, CK_STATE.class, CK_USER_TYPE.class};
    private static final Class<?>[] OTHERS = {String.class, long[].class, Integer.class, int[].class, boolean[].class,
        char[].class, Byte.class, Character.class, short[].class, LongRef.class, CK_ATTRIBUTE.class,
        CK_MECHANISM.class, CK_VERSION.class, CK_SSL3_RANDOM_DATA.class, CK_SSL3_KEY_MAT_OUT.class, Object.class};

    private static final int DIFFERENT = 20; // elements of an array of objects; further elements repeat them
    private static final Map<Class<?>, Field[]> FIELDS = new ConcurrentHashMap<>();
    private static final Class<?>[] SUBCLASSES = Hostile.class.getDeclaredClasses();

    // What overridden methods and, now and then, locking callbacks do.
    static LongSupplier callback = () -> {
        throw new IllegalStateException("hostile");
    };

    public final Object[] arguments;

    private final Random random;
    private final boolean shares;
    private final String name;
    private final Class<?>[] types;
    private final List<Object> shared = new ArrayList<>();

    public Hostile(long seed, int index) throws ReflectiveOperationException {
        random = new Random(seed);
        shares = chance(4);
        name = NATIVES[index].getName();
        types = NATIVES[index].getParameterTypes();
        arguments = new Object[types.length];
        for (int i = 0; i < types.length; i++) {
            arguments[i] = argument(types[i], i, i == 0 ? null : arguments[i - 1]);
        }
    }

    private Object argument(Class<?> type, int i, Object previous) throws ReflectiveOperationException {
        boolean fills = name.matches("C_FindObjects|C_GenerateRandom");
        int length = previous == null || !previous.getClass().isArray() ? size(previous) : Array.getLength(previous);
        if (type == long.class) {
            return fills ? capacity(around(length)) : around(length);
        } else if (type == LongRef.class) {
            Object result = make(type);
            if (result != null) {
                ((LongRef) result).value = capacity(around(length));
            }
            return result;
        } else if (type.isArray()) {
            return !type.getComponentType().isPrimitive() && chance(9) ? array(Object.class) : make(type);
        } else if (type == Object.class) {
            Class<?> structure = STRUCTURES.get(random.nextInt(STRUCTURES.size()));
            return name.equals("C_Initialize") && !chance(4) ? make(CK_C_INITIALIZE_ARGS.class)
                    : name.startsWith("get") && chance(2) ? make(structure) : value();
        }
        boolean mayDiffer = type.getSimpleName().matches(i > 2 ? "CK_.*(TYPE|INFO)" : "CK_.*");
        return type != CK_MECHANISM.class && mayDiffer && chance(9) ? value() : make(type);
    }

    private boolean chance(int oneIn) {
        return random.nextInt(oneIn) == 0;
    }

    private long around(int real) {
        long[] all = {real, real, real, real, real - 1, real + 1, 0, -1, Integer.MAX_VALUE, 1L << 31, (1L << 32) - 1,
            1L << 32, (1L << 32) + real, Long.MIN_VALUE, Long.MAX_VALUE, random.nextInt(5000)};
        return all[random.nextInt(all.length)];
    }

    private static long capacity(long length) {
        return (int) length == Integer.MAX_VALUE ? length + 1 : length;
    }

    // A value for a field of class Object.
    private Object value() throws ReflectiveOperationException {
        Class<?>[] classes = chance(16) ? OTHERS : WRITABLE;
        return make(classes[random.nextInt(classes.length)]);
    }

    @SuppressWarnings({"deprecation", "removal"}) // natives write into them, so they must not be shared
    private Object make(Class<?> type) throws ReflectiveOperationException {
        long number = around(random.nextInt(300));
        if (!type.isPrimitive() && chance(10)) {
            return null;
        } else if (type == Long.class) {
            return new Long(number);
        } else if (type == Boolean.class) {
            return new Boolean(chance(2));
        } else if (type == String.class) {
            return chance(8) ? "UNAVAILABLE_INFORMATION" : new String((char[]) array(char.class));
        } else if (type.isInterface()) { // a locking callback
            return Proxy.newProxyInstance(type.getClassLoader(), new Class<?>[] {type}, (proxy, method, given) ->
                    chance(6) ? fail() : method.getReturnType() == long.class ? (Object) number : "mutex");
        } else if (type.isPrimitive() || type.getName().startsWith("java.lang.") && type != Object.class) {
            return number(type, number);
        }
        for (Object other : shared) {
            if (shares && type.isInstance(other) && chance(3)) {
                return other;
            }
        }
        Object made = type.isArray() ? array(type.getComponentType()) : object(type);
        shared.add(made);
        return made;
    }

    private Object number(Class<?> type, long number) {
        char[] odd = {0, 0xd83d, 0xde00, 0xffff, 0xe9, 'a', (char) number};
        switch (type.getSimpleName().substring(0, 3).toLowerCase()) {
            case "byt": return (byte) number;
            case "sho": return (short) number;
            case "cha": return odd[random.nextInt(odd.length)];
            case "int": return (int) number;
            case "boo": return number % 2 == 0;
            default: return number;
        }
    }

    private Object array(Class<?> type) throws ReflectiveOperationException {
        int[] lengths = {0, 1, 2, 3, 4, 8, 16, random.nextInt(40), random.nextInt(chance(6) ? 3000 : 20)};
        Object array = Array.newInstance(type, lengths[random.nextInt(lengths.length)] / (type.isPrimitive() ? 1 : 2));
        for (int i = 0; i < Array.getLength(array); i++) {
            Array.set(array, i, type.isPrimitive() ? number(type, random.nextLong())
                    : i >= DIFFERENT ? Array.get(array, i % DIFFERENT)
                    : make(type == Object.class ? CK_ATTRIBUTE.class : type));
        }
        return array;
    }

    private Object object(Class<?> type) throws ReflectiveOperationException {
        Class<?> wanted = type;
        for (Class<?> subclass : SUBCLASSES) {
            wanted = subclass.getSuperclass() == type && chance(4) ? subclass : wanted;
        }
        Object object = wanted.getDeclaredConstructor().newInstance();
        for (Field field : fields(type)) {
            field.set(object, field.getType() == Object.class ? value() : make(field.getType()));
        }
        if (object instanceof CK_ATTRIBUTE_TYPE && chance(2)) {
            Field[] types = fields(CKA.class);
            ((CK_ATTRIBUTE_TYPE) object).m_value = chance(3) ? 65535 : types[random.nextInt(types.length)].getLong(null);
        } else if (object instanceof CK_ATTRIBUTE) {
            ((CK_ATTRIBUTE) object).valueLen = around(size(((CK_ATTRIBUTE) object).pValue));
        } else if (object instanceof CK_MECHANISM) {
            CK_MECHANISM mechanism = (CK_MECHANISM) object;
            int row = random.nextInt(chance(2) ? WRITING.length : STRUCTURES.size());
            mechanism.pParameter = chance(3) ? mechanism.pParameter : make(STRUCTURES.get(row));
            if (row < WRITING.length && !chance(3)) {
                mechanism.mechanism = new CK_MECHANISM_TYPE(WRITING[row]);
            }
            int size = size(mechanism.pParameter);
            boolean isAsserted = structureOf(mechanism.pParameter) != null && !isNotFreed(mechanism);
            mechanism.parameterLen = within(isAsserted, size, around(size));
        }
        withinAssertions(object, type);
        return object;
    }

    // A native that asserts a length compares its low half.
    private long within(boolean isAsserted, int asserted, long length) {
        return !isAsserted || (int) length == asserted ? length : chance(4) ? (1L << 32) + asserted : asserted;
    }

    // XLen is the length of pX; ulXLen is asserted only if both are not 0.
    private void withinAssertions(Object object, Class<?> type) throws ReflectiveOperationException {
        for (Field length : fields(type)) {
            for (Field bytes : fields(type)) {
                String base = length.getName().replace("Len", "");
                if (!length.getName().equals(base) && bytes.getName().equalsIgnoreCase("p" + base.replaceFirst("^ul", ""))) {
                    int real = size(bytes.get(object));
                    boolean isSkipped = base.startsWith("ul") && (real == 0 || (int) length.getLong(object) == 0);
                    length.setLong(object, within(!isSkipped, real, length.getLong(object)));
                }
            }
        }
    }

    private static boolean isNotFreed(CK_MECHANISM mechanism) {
        return mechanism.mechanism != null && (int) mechanism.mechanism.m_value == 0;
    }

    static Class<?> structureOf(Object parameter) {
        Class<?> type = parameter == null ? null : parameter.getClass();
        return type == null || STRUCTURES.contains(type) ? type
                : STRUCTURES.contains(type.getSuperclass()) ? type.getSuperclass() : null;
    }

    // The size of the native value, in bytes.
    private static int size(Object value) {
        if (value == null) {
            return 0;
        } else if (structureOf(value) != null) {
            return (int) CK_MECHANISM.getMechanismParameterSize(value);
        } else if (value instanceof String) {
            return ((String) value).chars().map(c -> c > 0x7ff ? 3 : c > 0x7f || c == 0 ? 2 : 1).sum();
        }
        boolean isBytes = value.getClass().getName().matches("\\[[BCZ]|.*(Boolean|BBOOL|Byte|Bool)");
        int width = isBytes ? 1 : value instanceof CK_DATE ? 8 : 4;
        return width * (value.getClass().isArray() ? Array.getLength(value) : 1);
    }

    static Field[] fields(Class<?> type) {
        return FIELDS.computeIfAbsent(type, Class::getFields);
    }

    private static long fail() {
        return callback.getAsLong();
    }

    // Subclasses whose fields hide those of their superclass, or whose methods throw.

    public static class Attribute extends CK_ATTRIBUTE { public byte[] pValue = {1}; }

    public static class Ref extends LongRef { public String value = "hidden"; }

    public static class Handle extends CK_OBJECT_HANDLE { public int m_value = 1; }

    public static class Pbe extends CK_PBE_PARAMS { public long pSalt = 1; }

    public static class Type extends CK_MECHANISM_TYPE { @Override public void setValue(long value) { fail(); } }

    public static class Bool extends CK_BBOOL { @Override public void setValue(boolean value) { fail(); } }

    public static class AttributeType extends CK_ATTRIBUTE_TYPE {
        @Override public void setValue(long value) { fail(); }
    }
}
