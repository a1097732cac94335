// The two handles of a key pair.
package halvorn.zerlin.token;

import halvorn.zerlin.CK_OBJECT_HANDLE;

/** The handles of a key pair that {@link Session#generateKeyPair} returns. Threads may share them. */
public final class KeyPairHandles {
    /** The public key. */
    public final CK_OBJECT_HANDLE publicKey;
    /** The private key. */
    public final CK_OBJECT_HANDLE privateKey;

    KeyPairHandles(CK_OBJECT_HANDLE publicKey, CK_OBJECT_HANDLE privateKey) {
        this.publicKey = publicKey;
        this.privateKey = privateKey;
    }
}
