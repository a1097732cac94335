// A signing service: eight threads sign 2,000 documents over a pool of sessions. While they work, the sessions are closed
// beneath the pool, one by one, as a restart of the HSM or a lost connection would do. No request is lost.

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import java.nio.charset.StandardCharsets;
import java.security.*;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.*;
import java.util.concurrent.atomic.AtomicInteger;

public final class SigningService {
    private static final int THREADS = 8, JOBS = 2000, JDK_CHECKS = 100;
    private static final String LABEL = "signing service";
    private static final byte[] P256 = Der.oid("1.2.840.10045.3.1.7"); // an elliptic curve

    private final AtomicInteger attempts = new AtomicInteger();
    // Handles serve all sessions. They die with the login, when the last session with the token has gone.
    private volatile CK_OBJECT_HANDLE privateKey, publicKey;

    public static void main(String[] arguments) throws Exception {
        try (Library library = Library.open()) {
            Slot slot = Demo.token(library);
            try (Session session = slot.openWritableSession()) {
                session.login(CKU.USER, Demo.userPin());
                session.generateKeyPair(new CK_MECHANISM(CKM.EC_KEY_PAIR_GEN),
                        new Attributes().with(CKA.EC_PARAMS, P256).with(CKA.LABEL, LABEL).yes(CKA.TOKEN, CKA.VERIFY),
                        new Attributes().with(CKA.LABEL, LABEL).yes(CKA.TOKEN, CKA.PRIVATE, CKA.SENSITIVE, CKA.SIGN));
            }
            try {
                new SigningService().serve(slot);
            } finally {
                try (Session session = slot.openWritableSession()) {
                    session.login(CKU.USER, Demo.userPin());
                    for (CK_OBJECT_HANDLE key : session.find(new Attributes().with(CKA.LABEL, LABEL))) {
                        session.destroy(key); // nothing else has stayed on the token
                    }
                }
            }
        }
        System.out.println("\nFinished: keys destroyed, sessions closed, library finalised.");
    }

    private void serve(Slot slot) throws Exception {
        ExecutorService threads = Executors.newFixedThreadPool(THREADS);
        // Whenever nobody is logged in, the pool calls this: after a new login, handles must be looked up again.
        try (SessionPool pool = new SessionPool(slot, THREADS, session -> {
            session.login(CKU.USER, Demo.userPin());
            privateKey = session.findOne(Attributes.of(CKO.PRIVATE_KEY).with(CKA.LABEL, LABEL));
            publicKey = session.findOne(Attributes.of(CKO.PUBLIC_KEY).with(CKA.LABEL, LABEL));
        })) {
            Demo.title(THREADS + " threads, " + JOBS + " documents");
            List<Future<byte[]>> results = new ArrayList<>();
            for (int i = 0; i < JOBS; i++) {
                byte[] document = document(i);
                results.add(threads.submit(() -> sign(pool, document)));
            }
            threads.shutdown(); // takes no more documents, and ends after the last
            int closed = 0;
            while (!threads.awaitTermination(10, TimeUnit.MILLISECONDS)) {
                closed += closeSession(pool) ? 1 : 0;
            }
            Demo.row("sessions closed beneath", closed);
            Demo.row("requests that ran again", attempts.get() - JOBS);
            check(pool, results);
        }
    }

    // Signing twice does no harm, so that a request whose session was lost may run again.
    private byte[] sign(SessionPool pool, byte[] document) throws GeneralSecurityException {
        byte[] digest = MessageDigest.getInstance("SHA-256").digest(document);
        return pool.runAgainIfLost(session -> {
            attempts.incrementAndGet();
            return session.sign(new CK_MECHANISM(CKM.ECDSA), privateKey, digest);
        });
    }

    // Takes a session from the pool, closes it with the native, of which the pool knows nothing, and puts it back.
    private static boolean closeSession(SessionPool pool) {
        return pool.run(session -> Cryptoki.C_CloseSession(session.handle()).isOk()); // not OK: closed already
    }

    // The token verifies all signatures, and the JDK, whose elliptic curves are slower, some of them.
    private void check(SessionPool pool, List<Future<byte[]>> results) throws Exception {
        Signature jdk = Signature.getInstance("SHA256withECDSA");
        PublicKey jdkKey = pool.runAgainIfLost(session -> Keys.publicKey(session, publicKey));
        jdk.initVerify(jdkKey);
        int verified = 0, right = 0;
        for (int i = 0; i < JOBS; i++) {
            byte[] signature = results.get(i).get(); // throws what the request threw
            byte[] digest = MessageDigest.getInstance("SHA-256").digest(document(i));
            CK_MECHANISM ecdsa = new CK_MECHANISM(CKM.ECDSA);
            verified += pool.runAgainIfLost(session -> session.verify(ecdsa, publicKey, digest, signature)) ? 1 : 0;
            if (i < JDK_CHECKS) {
                jdk.update(document(i));
                right += jdk.verify(Keys.signatureToDer(signature)) ? 1 : 0;
            }
        }
        Demo.row("signatures verified", verified + " of " + JOBS);
        boolean isRight = verified == JOBS && right == JDK_CHECKS && attempts.get() > JOBS; // some ran again
        Demo.checked("of the first " + JDK_CHECKS, right, isRight);
    }

    private static byte[] document(int number) {
        return ("document " + number).getBytes(StandardCharsets.UTF_8);
    }
}
