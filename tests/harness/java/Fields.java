// Creates Java objects from text and shows them as text, for the tables of the unit tests: the class and the values of
// all its fields, CK_MECH_TYPE_AND_OBJECT 544 7. Bytes are written [0102], arrays of objects ( 7 8 ), an object with
// one field as its value.

import java.lang.reflect.*;
import java.util.*;

public final class Fields {
    public static Object read(String text) throws ReflectiveOperationException {
        return read(new Scanner(text), Object.class);
    }

    // Does not initialise the class, because that loads the library.
    public static String methodsOfCryptoki() throws ReflectiveOperationException {
        ClassLoader loader = Fields.class.getClassLoader();
        return Arrays.toString(Class.forName("halvorn.zerlin.Cryptoki", false, loader).getDeclaredMethods());
    }

    private static Object read(Scanner words, Class<?> expected) throws ReflectiveOperationException {
        String word = words.next();
        switch (word.charAt(0)) {
            case 'n':
                return null;
            case '[':
                return HexFormat.of().parseHex(word, 1, word.length() - 1);
            case '(':
                List<Object> elements = new ArrayList<>();
                while (!words.hasNext("\\)")) {
                    elements.add(read(words, expected.getComponentType()));
                }
                words.next();
                return elements.toArray((Object[]) Array.newInstance(expected.getComponentType(), 0));
            case 'C':
                boolean isParameter = !word.matches("CK_(ATTRIBUTE|OBJECT_HANDLE|VERSION|.*INFO)");
                return object(words, Class.forName("halvorn.zerlin." + (isParameter ? "params." : "") + word));
            default:
                Long value = Long.valueOf(word);
                return expected == int.class ? (Object) value.intValue()
                        : expected == byte.class ? (Object) value.byteValue()
                        : expected == boolean.class ? (Object) (value == 1)
                        : expected == long.class || expected == Object.class ? value
                        : object(new Scanner(word), expected);
        }
    }

    // The text that read takes.
    public static String show(Object shown) throws ReflectiveOperationException {
        if (shown instanceof byte[] bytes) {
            return "[" + HexFormat.of().formatHex(bytes) + "]";
        }
        StringBuilder text = new StringBuilder();
        if (shown instanceof Object[] elements) {
            for (Object element : elements) {
                text.append(show(element)).append(' ');
            }
            return "( " + text + ")";
        }
        if (shown == null || shown.getClass().getName().startsWith("java.")) {
            return shown instanceof Boolean set ? set ? "1" : "0" : String.valueOf(shown);
        }
        Field[] fields = shown.getClass().getFields();
        for (Field field : fields) {
            text.append(' ').append(show(field.get(shown)));
        }
        return fields.length == 1 ? text.substring(1) : shown.getClass().getSimpleName() + text;
    }

    private static Object object(Scanner words, Class<?> cls) throws ReflectiveOperationException {
        Object object = cls.getConstructor().newInstance();
        for (Field field : cls.getFields()) {
            field.set(object, read(words, field.getType()));
        }
        return object;
    }
}
