// Tokens prepared: initialised, their PINs set.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.constants.CKF;
import halvorn.zerlin.constants.CKU;
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

    @Command(name = "init", description = "Initialize a token, which deletes everything, and set the PIN of the user.",
            footer = {"", "Example: zerlin token init Payments --so-pin-file so --pin-file pin"})
    int init(@Mixin TokenOptions options,
            @Parameters(paramLabel = "LABEL", description = "The new label.") String label,
            @Mixin SoPin officer,
            @Option(names = {"-y", "--yes"}, description = "Do not ask.") boolean yes) throws Exception {
        CK_TOKEN_INFO.paddedLabel(label);
        return TokenOptions.withLibrary(library -> {
            Slot slot = options.token == null ? empty(library) : TokenOptions.slot(library, Uri.of(options.token, "token"));
            CK_TOKEN_INFO info = slot.tokenInfo();
            if ((info.flags & CKF.TOKEN_INITIALIZED) != 0) {
                Pins.confirm(yes, "Delete everything on the token " + info.getLabel() + "?");
            }
            byte[] soPin = officer.pin();
            byte[] again = soPin.clone();
            byte[] pin = newPin(options);
            slot.initToken(soPin, label);
            try (Session session = slot.openWritableSession()) {
                session.login(CKU.SO, again);
                session.initPin(pin);
            }
            return 0;
        });
    }

    @Command(name = "pin", description = "Change the PIN of the user; with --reset, the security officer does.",
            footer = {"", "Example: zerlin token pin --token Payments --new-pin-file new"})
    int pin(@Mixin TokenOptions options,
            @Option(names = "--new-pin-file", paramLabel = "FILE", description = "The new PIN.") String newPinFile,
            @Option(names = "--reset", description = "The security officer sets the PIN.") boolean reset,
            @Mixin SoPin officer) throws Exception {
        Uri uri = Uri.of(options.token, "token");
        return TokenOptions.withLibrary(library -> {
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
            return 0;
        });
    }

    @Command(name = "reset", description = "Delete everything on a token, with the vendor's call.",
            footer = {"", "Example: zerlin token reset Payments --token Payments --so-pin-file so"})
    int reset(@Mixin TokenOptions options,
            @Parameters(paramLabel = "LABEL", description = "The new label.") String label,
            @Mixin SoPin officer,
            @Option(names = {"-y", "--yes"}, description = "Do not ask.") boolean yes) throws Exception {
        CK_TOKEN_INFO.paddedLabel(label);
        return TokenOptions.withLibrary(library -> {
            Slot slot = TokenOptions.slot(library, Uri.of(options.token, "token"));
            Pins.confirm(yes, "Delete everything on the token " + slot.tokenInfo().getLabel() + "?");
            byte[] soPin = officer.pin();
            byte[] again = soPin.clone();
            try (Session session = slot.openWritableSession()) {
                session.login(CKU.SO, soPin);
                session.vendorResetToken(again, label);
            }
            return 0;
        });
    }

    private static Slot empty(Library library) {
        return library.slots(true).stream().filter(slot -> (slot.tokenInfo().flags & CKF.TOKEN_INITIALIZED) == 0).findFirst()
                .orElseThrow(() -> new Failure(Failure.NOT_FOUND, "No token is new; --token names one that may be erased"));
    }

    private static byte[] newPin(TokenOptions options) throws IOException {
        boolean asks = options.pinFile == null && options.pinFd == null && options.pin == null;
        return asks ? twice("New PIN of the user") : options.pin(new Uri(), "");
    }

    private static byte[] twice(String question) throws IOException {
        byte[] pin = Pins.ask(question + ": ");
        byte[] again = Pins.ask(question + ", again: ");
        boolean same = Arrays.equals(pin, again);
        Arrays.fill(again, (byte) 0);
        if (!same) {
            throw new Failure(Failure.PIN, "The two PINs differ");
        }
        return pin;
    }
}
