// Objects for the fuzzer that only Java can make. The number chooses.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

public final class Hostile {
    private Hostile() {
    }

    // A value of a class that is not expected.
    public static Object other(long number) {
        Object[] all = {1.5, new Object(), new short[3], "caf\u00e9\0\ud83d\ude00", new LongRef(5), new CK_MECHANISM(),
            new CK_ATTRIBUTE(), new CK_VERSION(), new CK_SSL3_RANDOM_DATA(), new Object[] {new CK_ATTRIBUTE()},
            new Attribute(), new Handle(), new Pbe(), new Type(), new Bool(), new AttributeType(), new Ref()};
        return all[(int) number % all.length];
    }

    private static void fail() {
        throw new IllegalStateException("hostile");
    }

    public static class Attribute extends CK_ATTRIBUTE { public byte[] pValue = {1}; }

    public static class Ref extends LongRef { public String value = "hidden"; }

    public static class Handle extends CK_OBJECT_HANDLE { public int m_value = 1; }

    public static class Pbe extends CK_PBE_PARAMS { public long pSalt = 1; }

    public static class Type extends CK_MECHANISM_TYPE { @Override public void setValue(long value) { fail(); } }

    public static class Bool extends CK_BBOOL { @Override public void setValue(boolean value) { fail(); } }

    public static class AttributeType extends CK_ATTRIBUTE_TYPE { @Override public void setValue(long value) { fail(); } }
}
