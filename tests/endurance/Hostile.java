// Arguments of natives as nobody should pass them: null, of odd classes or of subclasses, shared, with wrong lengths
// and counts. Left out are what aborts the process as documented, lengths of structures that contradict their arrays,
// and output buffers of 2 GiB less one byte, whose allocation may succeed.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.lang.reflect.*;
import java.util.*;
import java.util.function.LongSupplier;
import java.util.jar.*;
import java.util.stream.Stream;

public final class Hostile {
    static final List<Class<?>> CLASSES = new ArrayList<>();

    static {
        try (JarFile jar = new JarFile(System.getProperty("java.class.path").split(":")[0])) {
            for (Object name : jar.stream().map(JarEntry::getName).filter(one -> one.matches("halvorn.*class")).toArray()) {
                CLASSES.add(Class.forName(name.toString().replace('/', '.').replace(".class", "")));
            }
        } catch (Exception e) {
            throw new ExceptionInInitializerError(e);
        }
    }

    static final Method[] NATIVES = CLASSES.stream().flatMap(owner -> Stream.of(owner.getDeclaredMethods()))
            .filter(method -> Modifier.isNative(method.getModifiers())).toArray(Method[]::new);

    // The classes that become structures, and the mechanisms that write results into theirs.
    private static final List<Class<?>> STRUCTURES = Stream.concat(Stream.of(Long.class, CK_VERSION.class),
            CLASSES.stream().filter(one -> one.getName().matches(".*params.CK_(?!SSL3_(RANDOM|.*OUT)).*"))).toList();
    private static final Map<Class<?>, Long> WRITING = Map.of(CK_PBE_PARAMS.class, CKM.PBE_SHA1_RC4_128,
            CK_SSL3_KEY_MAT_PARAMS.class, CKM.SSL3_KEY_AND_MAC_DERIVE, CK_KEY_WRAP_SET_OAEP_PARAMS.class,
            CKM.KEY_WRAP_SET_OAEP, CK_SSL3_MASTER_KEY_DERIVE_PARAMS.class, CKM.SSL3_MASTER_KEY_DERIVE,
            CK_PKCS12_PBE_IMPORT_PARAMS.class, CKM.PKCS12_PBE_IMPORT);

    // What overridden methods and, now and then, locking callbacks do.
    static LongSupplier action = () -> {
        throw new IllegalMonitorStateException("hostile");
    };

    private final Random random;
    private final Map<Class<?>, Object> shared = new HashMap<>();

    Hostile(Random random) {
        this.random = random;
    }

    Object[] argumentsOf(Executable called) throws ReflectiveOperationException {
        Class<?>[] types = called.getParameterTypes();
        Object[] arguments = new Object[types.length];
        long size = 0; // of the argument before
        for (int i = 0; i < types.length; i++) {
            arguments[i] = called.getName().equals("C_Initialize") ? make(CK_C_INITIALIZE_ARGS.class)
                    : types[i] == long.class ? (Object) around(size)
                    : types[i] == LongRef.class && !chance(10) ? new LongRef(around(size)) : make(types[i]);
            boolean isArray = arguments[i] != null && arguments[i].getClass().isArray();
            size = isArray ? Array.getLength(arguments[i]) : 4;
        }
        return arguments;
    }

    private <T> T oneOf(List<T> all) {
        return all.get(random.nextInt(all.size()));
    }

    private boolean chance(int oneIn) {
        return random.nextInt(oneIn) == 0;
    }

    private long around(long real) {
        return oneOf(List.of(real, real, real, real, real - 1, real + 1, 0L, -1L, 1L << 31, 1L << 32, (1L << 32) + real,
                Long.MIN_VALUE, 5000L, 70_000L));
    }

    @SuppressWarnings({"deprecation", "removal"}) // natives write into them, so they must not be shared
    private Object make(Class<?> type) throws ReflectiveOperationException {
        long number = around(random.nextInt(200));
        if (type == Object.class) {
            return make(oneOf(List.of(byte[].class, String.class, Long.class, CK_BBOOL.class, CK_DATE.class,
                    CK_OBJECT_HANDLE.class, CK_KEY_TYPE.class, CK_MECHANISM_TYPE[].class)));
        } else if (type.isPrimitive()) {
            return type == long.class ? (Object) number : type == int.class ? (Object) ((int) number & 0xFF)
                    : type == byte.class ? (Object) (byte) number : (Object) chance(2);
        } else if (chance(10)) {
            return null;
        } else if (type == Long.class) {
            return new Long(number);
        } else if (type == String.class) {
            return "caf\u00e9\0\ud83d\ude00";
        } else if (type == CK_KEY_TYPE.class && chance(2)) {
            return new CK_KEY_TYPE() { @Override public void setValue(long value) { action.getAsLong(); } };
        } else if (type.isInterface()) { // a locking callback
            return Proxy.newProxyInstance(type.getClassLoader(), new Class<?>[] {type}, (proxy, method, given) ->
                    chance(6) ? action.getAsLong() : method.getReturnType() == long.class ? (Object) number : "mutex");
        }
        if (!shared.containsKey(type) || !chance(8)) {
            shared.put(type, type.isArray() ? array(type.getComponentType()) : object(type));
        }
        return shared.get(type);
    }

    private Object array(Class<?> type) throws ReflectiveOperationException {
        Object array = Array.newInstance(type, random.nextInt(chance(16) && type.isPrimitive() ? 3000 : 17));
        for (int i = 0; i < Array.getLength(array); i++) {
            Array.set(array, i, make(type));
        }
        return array;
    }

    private Object object(Class<?> type) throws ReflectiveOperationException {
        if (type == CK_MECHANISM.class) {
            Class<?> one = chance(2) ? Object.class : oneOf(STRUCTURES);
            CK_MECHANISM made = new CK_MECHANISM(WRITING.getOrDefault(one, around(CKM.AES_CBC)), make(one));
            boolean isStructure = made.pParameter != null && STRUCTURES.contains(made.pParameter.getClass());
            made.parameterLen = isStructure ? made.parameterLen : around(made.parameterLen);
            return made;
        } else if (type == CK_ATTRIBUTE.class && !chance(8)) {
            CK_ATTRIBUTE made = new CK_ATTRIBUTE(chance(8) ? CKA.WILDCARD : CKA.LABEL, make(Object.class));
            made.valueLen = around(made.valueLen);
            made.pValue = chance(16) ? made : made.pValue;
            return made;
        }
        if (STRUCTURES.contains(type)) { // the full constructor makes the lengths right
            Constructor<?> full = Collections.max(Arrays.asList(type.getConstructors()),
                    Comparator.comparing(Constructor::getParameterCount));
            return full.newInstance(argumentsOf(full));
        }
        Object made = type.getDeclaredConstructor().newInstance();
        for (Field field : type.getFields()) {
            field.set(made, make(field.getType()));
        }
        return made;
    }

    // Changes one thing somewhere in an argument.
    void change(Object target) throws ReflectiveOperationException {
        if (target instanceof byte[]) {
            random.nextBytes((byte[]) target);
        } else if (target instanceof Object[] && ((Object[]) target).length > 0) {
            Object[] array = (Object[]) target;
            int i = random.nextInt(array.length);
            change(array[i]);
            array[i] = array[chance(2) ? i : random.nextInt(array.length)];
        } else if (target instanceof CK_MECHANISM) { // whose length stays that of a structure
            CK_MECHANISM mechanism = (CK_MECHANISM) target;
            Object kept = mechanism.pParameter;
            mechanism.pParameter = make(byte[].class);
            mechanism.pParameter = kept;
        } else if (target != null && CLASSES.contains(target.getClass()) && !STRUCTURES.contains(target.getClass())) {
            Field[] fields = target.getClass().getFields();
            Field field = fields[random.nextInt(fields.length)];
            field.set(target, make(field.getType()));
        }
    }
}
