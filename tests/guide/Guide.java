// Runs the java blocks of a page, in their order, as one program on the tokens that are configured. Every line of a
// block keeps its line number, so that the compiler and a stack trace name the line of the page.

import java.lang.reflect.*;
import java.net.*;
import java.nio.file.*;
import java.util.*;

import javax.tools.*;

public final class Guide {
    /** Stands where the first section begins. */
    private static final String START = "class Page { static char[] pin() { return \"user-secret\".toCharArray(); }"
            + " static char[] soPin() { return \"so-secret\".toCharArray(); }"
            + " public static void main(String... arguments) throws Exception {{";

    private Guide() {
    }

    public static void main(String[] arguments) throws Exception {
        Path page = Paths.get(arguments[0]);
        Path classes = Files.createDirectories(Paths.get(arguments[1]));
        String program = program(Files.readAllLines(page));
        JavaFileObject source = new SimpleJavaFileObject(URI.create("page:///guide.md"), JavaFileObject.Kind.SOURCE) {
            @Override
            public CharSequence getCharContent(boolean ignoreEncodingErrors) {
                return program;
            }
        };
        List<String> options = Arrays.asList("-source", "8", "-target", "8", "-Xlint:all,-options,-try", "-Werror",
                "-cp", System.getProperty("java.class.path"), "-d", classes.toString());
        boolean compiled = ToolProvider.getSystemJavaCompiler()
                .getTask(null, null, null, options, null, Collections.singletonList(source)).call();
        if (!compiled) System.exit(1);
        try (URLClassLoader loader = new URLClassLoader(new URL[] {classes.toUri().toURL()})) {
            Method main = loader.loadClass("Page").getDeclaredMethod("main", String[].class);
            main.setAccessible(true);
            main.invoke(null, (Object) new String[0]);
        } catch (InvocationTargetException failed) {
            failed.getCause().printStackTrace();
            System.exit(1);
        }
    }

    /** What is not code becomes an empty line; each section is a block, the later ones inside the one with the marker. */
    private static String program(List<String> page) {
        StringBuilder program = new StringBuilder();
        boolean java = false;
        String end = "";
        for (String line : page) {
            boolean fence = line.startsWith("```");
            String code = java && !fence ? line : "";
            if (line.startsWith("## ")) code = program.indexOf(START) < 0 ? START : "} {";
            if (fence) {
                code = java ? end : line.endsWith("not run") ? "if (false) {" : "";
                end = java || code.isEmpty() ? "" : "}";
                java = line.startsWith("```java");
            }
            program.append(code).append('\n');
        }
        // What the section with the marker declares, the later ones see.
        return program.toString().replaceFirst("(?s)// The code of this page goes here\\.\n}(.*?)\n} \\{", "\n$1\n{") + "}}}}}";
    }
}
