// Java objects from text and to text, for the tables of the unit tests:
// CK_MECH_TYPE_AND_OBJECT{mechanism=544 hObj=7}. Bytes are [0102], arrays of objects (7 8), a java.lang.Long that
// stands alone 5L; an object with a single value is told as that value where its class is expected. Fields that
// are null or the number 0 are left out.

import java.lang.reflect.Array;
import java.lang.reflect.Field;
import java.lang.reflect.Modifier;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.StringJoiner;

public final class Fields {
    private final String text;
    private int at = 0;

    private Fields(String text) {
        this.text = text;
    }

    public static Object read(String text) throws ReflectiveOperationException {
        return new Fields(text).value(Object.class);
    }

    public static String tell(Object object) throws ReflectiveOperationException {
        return tell(object, Object.class);
    }

    // Which objects the object holds, and what these hold.
    public static String identities(Object object) throws ReflectiveOperationException {
        StringBuilder told = new StringBuilder();
        for (Object held : object instanceof Object[] ? Arrays.asList((Object[]) object) : values(object)) {
            if (!(held instanceof Number || held instanceof Boolean)) {
                told.append(System.identityHashCode(held)).append(' ').append(identities(held));
            }
        }
        return told.toString();
    }

    private static List<Object> values(Object object) throws ReflectiveOperationException {
        List<Object> values = new ArrayList<>();
        for (Field field : fieldsOf(object)) {
            values.add(field.get(object));
        }
        return values;
    }

    private static String tell(Object value, Class<?> expected) throws ReflectiveOperationException {
        if (value instanceof byte[]) {
            StringBuilder hex = new StringBuilder("[");
            for (byte element : (byte[]) value) {
                hex.append(String.format("%02x", element));
            }
            return hex + "]";
        }
        if (value instanceof Object[]) {
            StringJoiner elements = new StringJoiner(" ", "(", ")");
            for (Object element : (Object[]) value) {
                elements.add(tell(element, value.getClass().getComponentType()));
            }
            return elements.toString();
        }
        if (value instanceof Boolean) {
            return (Boolean) value ? "1" : "0";
        }
        if (value instanceof Byte) {
            return String.valueOf((Byte) value & 0xFF);
        }
        if (value == null || value.getClass().getName().startsWith("java")) {
            return value instanceof Long && expected == Object.class ? value + "L" : String.valueOf(value);
        }
        List<Field> fields = fieldsOf(value);
        if (fields.size() == 1 && expected == value.getClass()) {
            return tell(fields.get(0).get(value), fields.get(0).getType());
        }
        StringJoiner told = new StringJoiner(" ", value.getClass().getSimpleName() + "{", "}");
        for (Field field : fields) {
            String held = tell(field.get(value), field.getType());
            if (!held.equals("null") && !(held.equals("0") && field.getType().isPrimitive())) {
                told.add(field.getName() + "=" + held);
            }
        }
        return told.toString();
    }

    // The fields of a class of the library; none of another's.
    private static List<Field> fieldsOf(Object object) {
        List<Field> fields = new ArrayList<>();
        if (object != null && object.getClass().getName().startsWith("halvorn")) {
            for (Field field : object.getClass().getFields()) {
                if (!Modifier.isStatic(field.getModifiers())) {
                    fields.add(field);
                }
            }
        }
        return fields;
    }

    private Object value(Class<?> expected) throws ReflectiveOperationException {
        if (text.charAt(at) == '(') {
            return array(expected.getComponentType());
        }
        String word = word();
        if (word.equals("null")) {
            return null;
        }
        if (word.startsWith("[")) {
            byte[] bytes = new byte[(word.length() - 2) / 2];
            for (int i = 0; i < bytes.length; i++) {
                bytes[i] = (byte) Integer.parseInt(word.substring(2 * i + 1, 2 * i + 3), 16);
            }
            return bytes;
        }
        if (at < text.length() && text.charAt(at) == '{') {
            return object(word);
        }
        return number(Long.parseLong(word.replace("L", "")), expected);
    }

    private String word() {
        int begin = at;
        while (at < text.length() && " ={}()".indexOf(text.charAt(at)) < 0) {
            at++;
        }
        return text.substring(begin, at);
    }

    private Object array(Class<?> elementClass) throws ReflectiveOperationException {
        List<Object> elements = new ArrayList<>();
        while (text.charAt(at++) != ')') {
            if (text.charAt(at) != ')') {
                elements.add(value(elementClass));
            }
        }
        return elements.toArray((Object[]) Array.newInstance(elementClass, 0));
    }

    private Object object(String name) throws ReflectiveOperationException {
        Class<?> cls;
        try {
            cls = Class.forName("halvorn.zerlin.params." + name);
        } catch (ClassNotFoundException e) {
            cls = Class.forName("halvorn.zerlin." + name);
        }
        Object object = cls.getConstructor().newInstance();
        for (Field field : fieldsOf(object)) {
            if (!field.getType().isPrimitive()) {
                field.set(object, null);
            }
        }
        while (text.charAt(at++) != '}') {
            if (text.charAt(at) != '}') {
                Field field = cls.getField(word());
                at++;
                field.set(object, value(field.getType()));
            }
        }
        return object;
    }

    private static Object number(long number, Class<?> expected) throws ReflectiveOperationException {
        if (expected == int.class) {
            return (int) number;
        }
        if (expected == byte.class) {
            return (byte) number;
        }
        if (expected == boolean.class) {
            return number != 0;
        }
        if (expected == long.class || expected == Object.class) {
            return number;
        }
        Object holder = expected.getConstructor().newInstance();
        Field field = fieldsOf(holder).get(0);
        field.set(holder, number(number, field.getType()));
        return holder;
    }
}
