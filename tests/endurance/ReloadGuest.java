// The class that Reload loads together with the jar, in one class loader.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;

/** Uses the library and leaves it initialised, with Java's locking, until it is closed. */
public final class ReloadGuest implements Runnable, AutoCloseable {
    private static final CK_SESSION_HANDLE SESSION = new CK_SESSION_HANDLE();

    /** Called by reflection. */
    public ReloadGuest() {
    }

    @Override
    public void run() {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking()).orThrow();
        Cryptoki.C_GetObjectSize(SESSION, new CK_OBJECT_HANDLE(), new LongRef()).orThrow();
        CK_KEY_TYPE aes = CTUtil.CTU_GetKeyTypeValue(new byte[] {'A', 'E', 'S'});
        if (!aes.equals(new CK_KEY_TYPE(CKK.AES))) {
            throw new IllegalStateException("The key type is " + aes);
        }
    }

    @Override
    public void close() {
        Cryptoki.C_SeedRandom(SESSION, new byte[3], 3).orThrow(); // the module calls back from its own threads
        Cryptoki.C_Finalize(null).orThrow();
    }
}
