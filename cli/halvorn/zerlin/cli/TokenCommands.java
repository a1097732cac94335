// Tokens prepared: initialised, their PINs set.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import picocli.CommandLine.*;

import java.io.IOException;
import java.util.Arrays;

@Command(name = "token", description = "Prepare tokens.", footer = {"", "Example: zerlin token init --help"})
final class TokenCommands extends Group {
    /** The PIN of the security officer. */
    static final class SoPin {
        @Option(names = "--so-pin-file", paramLabel = "FILE", description = "The PIN of the security officer.")
        private String file;

        private byte[] pin() throws IOException {
            return file != null ? Pins.read(file) : Pins.ask("PIN of the security officer: ");
        }
    }

    /** What happens to all that is on a token. */
    static final class Erasure {
        @Mixin private SoPin officer;

        @Parameters(paramLabel = "LABEL", description = "The new label.") private String label;

        @Option(names = {"-y", "--yes"}, description = "Do not ask.") private boolean yes;

        /** Asks, and returns the PIN of the officer twice: a call wipes the PIN that it gets. */
        private byte[][] confirm(CK_TOKEN_INFO token) throws IOException {
            CK_TOKEN_INFO.paddedLabel(label);
            if ((token.flags & CKF.TOKEN_INITIALIZED) != 0) {
                Pins.confirm(yes, "Delete everything on the token " + token.getLabel() + "?");
            }
            byte[] pin = officer.pin();
            return new byte[][] {pin, Pins.secret(pin.clone())};
        }
    }

    @Command(name = "init", description = "Initialize a token, which deletes everything, and set the PIN of the user.",
            footer = {"", "Example: zerlin token init Payments --so-pin-file so --pin-file pin"})
    void init(@Mixin TokenOptions options, @Mixin Erasure erasure) throws Exception {
        TokenOptions.withLibrary(library -> {
            Slot slot = options.token == null ? empty(library) : TokenOptions.slot(library, Uri.of(options.token, "token"));
            byte[][] soPins = erasure.confirm(slot.tokenInfo());
            byte[] pin = options.namesPin(new Uri()) ? options.pin(new Uri(), "") : twice("New PIN of the user");
            slot.initToken(soPins[0], erasure.label);
            try (Session session = slot.openWritableSession()) {
                session.login(CKU.SO, soPins[1]);
                session.initPin(pin);
            }
        });
    }

    @Command(name = "pin", description = "Change the PIN of the user; with --reset, the security officer does.",
            footer = {"", "Example: zerlin token pin --token Payments --new-pin-file new"})
    void pin(@Mixin TokenOptions options, @Mixin SoPin officer,
            @Option(names = "--new-pin-file", paramLabel = "FILE", description = "The new PIN.") String newPinFile,
            @Option(names = "--reset", description = "The security officer sets the PIN.") boolean reset) throws Exception {
        Uri uri = Uri.of(options.token, "token");
        TokenOptions.withLibrary(library -> {
            try (Session session = TokenOptions.slot(library, uri).openWritableSession()) {
                byte[] old = reset ? officer.pin() : options.pin(uri, "Old PIN: ");
                byte[] pin = newPinFile != null ? Pins.read(newPinFile) : twice("New PIN");
                if (reset) {
                    session.login(CKU.SO, old);
                    session.initPin(pin);
                } else {
                    session.setPin(old, pin);
                }
            }
        });
    }

    @Command(name = "reset", description = "Delete everything on a token, with the vendor's call.",
            footer = {"", "Example: zerlin token reset Payments --token Payments --so-pin-file so"})
    void reset(@Mixin TokenOptions options, @Mixin Erasure erasure) throws Exception {
        TokenOptions.withLibrary(library -> {
            Slot slot = TokenOptions.slot(library, Uri.of(options.token, "token"));
            byte[][] soPins = erasure.confirm(slot.tokenInfo());
            try (Session session = slot.openWritableSession()) {
                session.login(CKU.SO, soPins[0]);
                session.vendorResetToken(soPins[1], erasure.label);
            }
        });
    }

    private static Slot empty(Library library) {
        return library.slots(true).stream().filter(slot -> (slot.tokenInfo().flags & CKF.TOKEN_INITIALIZED) == 0).findFirst()
                .orElseThrow(() -> new Failure(Failure.NOT_FOUND, "No token is new; --token names one that may be erased"));
    }

    private static byte[] twice(String question) throws IOException {
        byte[] pin = Pins.ask(question + ": ");
        Failure.when(!Arrays.equals(pin, Pins.ask(question + ", again: ")), Failure.PIN, "The two PINs differ");
        return pin;
    }
}
