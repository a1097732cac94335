// Objects for the fuzzer that only Java can make. The number chooses.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.lang.reflect.Field;
import java.lang.reflect.Modifier;

public final class Hostile {
    private Hostile() {
    }

    // The object, or one of a subclass whose fields hide those of its class, or whose methods throw.
    public static Object like(Object object, int number) throws ReflectiveOperationException {
        for (Class<?> subclass : Hostile.class.getDeclaredClasses()) {
            if (number % 8 == 0 && subclass.getSuperclass() == object.getClass()) {
                return subclass.getDeclaredConstructor().newInstance();
            }
        }
        return object;
    }

    // May take an object away from one field. Arrays stay, because their lengths must be right.
    public static Object hollow(Object object, int number) throws ReflectiveOperationException {
        Field[] fields = object.getClass().getFields();
        Field field = fields[number / 8 % fields.length];
        boolean isFree = !field.getType().isPrimitive() && !field.getType().isArray();
        if (number % 8 == 0 && isFree && !Modifier.isStatic(field.getModifiers())) {
            field.set(object, null);
        }
        return object;
    }

    // A value of a class that is not expected.
    public static Object other(Object object, int number) {
        Object[] all = {1.5, new Object(), new short[3], "caf\u00e9\0\ud83d\ude00", new LongRef(5), new CK_MECHANISM(),
            new CK_ATTRIBUTE(), new CK_VERSION(), new CK_SSL3_RANDOM_DATA(), new Object[] {new CK_ATTRIBUTE()},
            new Attribute(), new Handle(), new Pbe(), new Type(), new Bool(), new AttributeType(), new CK_DATE()};
        return all[number % all.length];
    }

    // Locking callbacks, of which some are missing and some throw.
    public static Object callbacks(Object object, int number) {
        CK_C_INITIALIZE_ARGS args = new CK_C_INITIALIZE_ARGS();
        args.createMutex = number % 8 == 0 ? null : () -> number % 7 == 0 ? fail() : number % 5 == 0 ? null : "mutex";
        args.destroyMutex = number % 9 == 0 ? null : mutex -> number % 11 == 0 ? fail() : number;
        args.lockMutex = number % 10 == 0 ? null : mutex -> number % 13 == 0 ? fail() : number;
        args.unlockMutex = number % 12 == 0 ? null : mutex -> number % 17 == 0 ? fail() : 0;
        args.flags = number;
        return args;
    }

    private static long fail() {
        throw new IllegalStateException("hostile");
    }

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
