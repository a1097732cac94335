// What ends a command: one line of text, and an exit code.
package halvorn.zerlin.cli;

import halvorn.zerlin.CryptokiException;
import halvorn.zerlin.constants.CKR;

import java.io.IOException;
import java.security.GeneralSecurityException;
import java.util.*;

final class Failure extends RuntimeException {
    static final int NO = 1;
    static final int USAGE = 2;
    static final int NOT_FOUND = 3;
    static final int PIN = 4;
    static final int TOKEN = 5;
    static final int INPUT = 6;

    private static final long serialVersionUID = 1L;
    private static final long[] PIN_VALUES = {CKR.PIN_INCORRECT, CKR.PIN_INVALID, CKR.PIN_LEN_RANGE, CKR.PIN_EXPIRED,
        CKR.PIN_LOCKED, CKR.USER_NOT_LOGGED_IN, CKR.USER_PIN_NOT_INITIALIZED};

    final int code;

    Failure(int code, String text) {
        super(text);
        this.code = code;
    }

    /** Ends the command if something is wrong. */
    static void when(boolean isWrong, int code, String text) {
        if (isWrong) {
            throw new Failure(code, text);
        }
    }

    static int codeOf(Throwable e) {
        return e instanceof Failure ? ((Failure) e).code
            : e instanceof CryptokiException && Arrays.stream(PIN_VALUES).anyMatch(((CryptokiException) e)::is) ? PIN
            : e instanceof NoSuchElementException ? NOT_FOUND
            : e instanceof IllegalArgumentException ? USAGE
            : e instanceof IOException || e instanceof GeneralSecurityException ? INPUT : TOKEN;
    }

    static String textOf(Throwable e) {
        String text = e.getMessage() == null || e instanceof java.nio.file.NoSuchFileException ? e.toString() : e.getMessage();
        return text.replaceAll("\\s*\n[- ]*", ": ");
    }
}
