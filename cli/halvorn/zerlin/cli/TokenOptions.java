// The options that all commands share: the token, the PIN, the form of the output. They open the token.
package halvorn.zerlin.cli;

import static java.nio.charset.StandardCharsets.UTF_8;

import halvorn.zerlin.CK_INFO;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import picocli.CommandLine.Option;

import java.io.IOException;
import java.util.List;
import java.util.stream.Collectors;

class TokenOptions {
    @Option(names = {"-h", "--help"}, usageHelp = true, description = "Show this help.") boolean help;

    @Option(names = "--verbose", description = "Print the stack trace of an error.") boolean verbose;

    @Option(names = "--json", description = "Print JSON.") boolean json;

    @Option(names = {"-t", "--token"}, paramLabel = "TOKEN", description = "The label or the URI of the token.") String token;

    @Option(names = "--login", negatable = true, description = "Log in; without it, if that is needed or a PIN is named.")
    Boolean login;

    @Option(names = "--pin-file", paramLabel = "FILE", description = "Read the PIN from its first line.") String pinFile;

    @Option(names = "--pin-fd", paramLabel = "N", description = "Read the PIN from file descriptor N.") Integer pinFd;

    @Option(names = "--pin", paramLabel = "PIN", description = "The PIN, only with --pin-insecure: other users can see it.")
    String pin;

    @Option(names = "--pin-insecure", description = "Allow --pin, and pin-value in a URI.") boolean pinInsecure;

    /** What is done with something open: the library, a token, a stream. */
    interface Work<T> {
        void run(T open) throws Exception;
    }

    static void withLibrary(Work<Library> work) throws Exception {
        try (Library library = Library.open()) {
            work.run(library);
        } finally {
            Pins.wipe();
        }
    }

    /** Opens the token that the option or an object's URI names; logs in if the work needs it or a PIN is named. */
    void open(Uri object, boolean writable, boolean needsLogin, Work<OpenToken> work) throws Exception {
        Uri uri = object.in(Uri.of(token, "token"));
        boolean logsIn = login == null ? needsLogin || namesPin(uri) : login;
        withLibrary(library -> open(library, uri, writable, logsIn, work));
    }

    /** Opens the token of a URI; the PIN is that of the URI, of the options, or asked for. */
    void open(Library library, Uri uri, boolean writable, boolean logsIn, Work<OpenToken> work) throws Exception {
        try (OpenToken open = new OpenToken(library, slot(library, uri), writable)) {
            if (logsIn && !open.session.isLoggedIn() && (open.info.flags & CKF.LOGIN_REQUIRED) != 0) {
                if ((open.info.flags & CKF.PROTECTED_AUTHENTICATION_PATH) != 0 && !namesPin(uri)) {
                    open.session.login(CKU.USER);
                } else {
                    open.session.login(CKU.USER, pin(uri, "PIN of the token " + open.info.getLabel() + ": "));
                }
            }
            work.run(open);
        }
    }

    boolean namesPin(Uri uri) {
        return pinFile != null || pinFd != null || pin != null || uri.get("pin-source") != null || uri.get("pin-value") != null;
    }

    static Slot slot(Library library, Uri uri) {
        CK_INFO info = library.info();
        List<Slot> found = library.slots(true).stream().filter(slot -> uri.matches(info, slot)).collect(Collectors.toList());
        Failure.when(found.size() != 1, Failure.NOT_FOUND, (found.isEmpty() ? "No token fits" : found.size() + " tokens fit")
                + "; \"zerlin slots\" lists the tokens, --token chooses one");
        return found.get(0);
    }

    /** Returns the PIN that the options or the URI name, or asks for it. */
    byte[] pin(Uri uri, String question) throws IOException {
        String source = uri.get("pin-source");
        Failure.when(!pinInsecure && (pin != null || uri.get("pin-value") != null), Failure.USAGE,
                "Other users can see a PIN in an argument or a URI: use --pin-file or --pin-fd, or allow it with"
                + " --pin-insecure");
        Failure.when(source != null && source.startsWith("|"), Failure.USAGE,
                "A pin-source that runs a program is not supported, only file:");
        return pinFile != null ? Pins.read(pinFile) : pinFd != null ? Pins.read("/proc/self/fd/" + pinFd)
            : pin != null ? pin.getBytes(UTF_8)
            : source != null ? Pins.read(source.replaceFirst("^file:(//(localhost)?(?=/))?", ""))
            : uri.get("pin-value") != null ? uri.get("pin-value").getBytes(UTF_8)
            : Pins.ask(question);
    }
}
