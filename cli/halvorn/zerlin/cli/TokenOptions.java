// The options that all commands share: the token, the PIN, the form of the output. They open the token.
package halvorn.zerlin.cli;

import static java.nio.charset.StandardCharsets.UTF_8;

import halvorn.zerlin.CK_INFO;
import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.constants.CKF;
import halvorn.zerlin.constants.CKU;
import halvorn.zerlin.token.*;

import picocli.CommandLine.Option;

import java.io.IOException;
import java.util.ArrayList;
import java.util.List;

final class TokenOptions {
    @Option(names = {"-h", "--help"}, usageHelp = true, description = "Show this help.") boolean help;

    @Option(names = "--verbose", description = "Print the stack trace of an error.") boolean verbose;

    @Option(names = "--json", description = "Print JSON.") boolean json;

    @Option(names = {"-t", "--token"}, paramLabel = "TOKEN",
            description = "The label or the URI of the token.")
    String token;

    @Option(names = "--login", negatable = true, description = "Log in; without it, if that is needed or a PIN is named.")
    Boolean login;

    @Option(names = "--pin-file", paramLabel = "FILE", description = "Read the PIN from the first line of FILE.")
    String pinFile;

    @Option(names = "--pin-fd", paramLabel = "N", description = "Read the PIN from file descriptor N.") Integer pinFd;

    @Option(names = "--pin", paramLabel = "PIN", description = "The PIN, only with --pin-insecure: other users can see it.")
    String pin;

    @Option(names = "--pin-insecure", description = "Allow --pin, and pin-value in a URI.") boolean pinInsecure;

    /** What is done with the library or an open token. */
    interface Work<T> {
        int run(T open) throws Exception;
    }

    static int withLibrary(Work<Library> work) throws Exception {
        try (Library library = Library.open()) {
            return work.run(library);
        } finally {
            Pins.wipe();
        }
    }

    /** Opens the token that the option or an object's URI names; logs in if the work needs it or a PIN is named. */
    int withToken(Uri object, boolean writable, boolean needsLogin, Work<OpenToken> work) throws Exception {
        Uri uri = object.in(Uri.of(token, "token"));
        return withLibrary(library -> {
            Slot slot = slot(library, uri);
            try (Session session = writable ? slot.openWritableSession() : slot.openSession()) {
                OpenToken open = new OpenToken(library, slot, slot.tokenInfo(), session);
                if (login == null ? needsLogin || namesPin(uri) : login) {
                    logIn(open, uri);
                }
                return work.run(open);
            }
        });
    }

    /** Opens a second token; its PIN is that of its URI, of the options, or asked for. */
    int withOther(OpenToken first, Uri uri, Work<OpenToken> work) throws Exception {
        Slot slot = slot(first.library, uri);
        try (Session session = slot.openWritableSession()) {
            OpenToken other = new OpenToken(first.library, slot, slot.tokenInfo(), session);
            if (!session.isLoggedIn()) {
                logIn(other, uri);
            }
            return work.run(other);
        }
    }

    private boolean namesPin(Uri uri) {
        return pinFile != null || pinFd != null || pin != null || uri.get("pin-source") != null || uri.get("pin-value") != null;
    }

    static Slot slot(Library library, Uri uri) {
        CK_INFO info = library.info();
        List<Slot> found = new ArrayList<>();
        for (Slot slot : library.slots(true)) {
            CK_TOKEN_INFO token = slot.tokenInfo();
            boolean isNamed = uri.get("slot-id") != null;
            if ((isNamed || (token.flags & CKF.TOKEN_INITIALIZED) != 0) && uri.matches(info, slot.id(), slot.info(), token)) {
                found.add(slot);
            }
        }
        if (found.size() != 1) {
            throw new Failure(Failure.NOT_FOUND, (found.isEmpty() ? "No token fits" : found.size() + " tokens fit")
                    + "; \"zerlin slots\" lists the tokens, --token chooses one");
        }
        return found.get(0);
    }

    private void logIn(OpenToken open, Uri uri) throws IOException {
        if ((open.info.flags & CKF.LOGIN_REQUIRED) == 0) {
            return;
        }
        if ((open.info.flags & CKF.PROTECTED_AUTHENTICATION_PATH) != 0 && !namesPin(uri)) {
            open.session.login(CKU.USER);
        } else {
            open.session.login(CKU.USER, pin(uri, "PIN of the token " + open.info.getLabel() + ": "));
        }
    }

    /** Returns the PIN that the options or the URI name, or asks for it. */
    byte[] pin(Uri uri, String question) throws IOException {
        String source = uri.get("pin-source");
        if (!pinInsecure && (pin != null || uri.get("pin-value") != null)) {
            throw new Failure(Failure.USAGE, "Other users can see a PIN in an argument or a URI: use --pin-file or --pin-fd,"
                    + " or allow it with --pin-insecure");
        } else if (source != null && source.startsWith("|")) {
            throw new Failure(Failure.USAGE, "A pin-source that runs a program is not supported, only file:");
        }
        return pinFile != null ? Pins.read(pinFile) : pinFd != null ? Pins.read("/proc/self/fd/" + pinFd)
            : pin != null ? pin.getBytes(UTF_8)
            : source != null ? Pins.read(source.replaceFirst("^file:(//(localhost)?(?=/))?", ""))
            : uri.get("pin-value") != null ? uri.get("pin-value").getBytes(UTF_8)
            : Pins.ask(question);
    }
}
