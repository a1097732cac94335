// Public keys and signatures in the forms that other software expects.
package halvorn.zerlin.token;

import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CKK;
import halvorn.zerlin.constants.CK_KEY_TYPE;

import java.math.BigInteger;
import java.security.GeneralSecurityException;
import java.security.KeyFactory;
import java.security.PublicKey;
import java.security.spec.X509EncodedKeySpec;
import java.util.Arrays;

/** Converts public keys and ECDSA signatures between PKCS#11 and the forms of certificates and of the JDK. */
public final class Keys {
    private Keys() {
    }

    /**
     * Calls {@code C_GetAttributeValue} three times: reads a public key as certificates hold it.
     *
     * @param session the session to read with
     * @param key     an RSA key (also a private one that has its public exponent) or a public EC key
     * @return the DER of its SubjectPublicKeyInfo (RFC 5280), a new array
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_OBJECT_HANDLE_INVALID}
     * @throws java.util.NoSuchElementException if the key does not have the attributes of a public key
     * @throws IllegalArgumentException if the key is neither RSA nor EC
     */
    public static byte[] subjectPublicKeyInfo(Session session, CK_OBJECT_HANDLE key) {
        return info(session, key, session.read(key, CKA.KEY_TYPE).number(CKA.KEY_TYPE));
    }

    /**
     * Calls {@code C_GetAttributeValue} three times: reads a public key as a key of the JDK.
     *
     * @param session the session to read with
     * @param key     as for {@link #subjectPublicKeyInfo}
     * @return a new key
     * @throws GeneralSecurityException if no provider of the JDK knows such a key, for example its curve
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_OBJECT_HANDLE_INVALID}
     * @throws java.util.NoSuchElementException if the key does not have the attributes of a public key
     * @throws IllegalArgumentException if the key is neither RSA nor EC
     */
    public static PublicKey publicKey(Session session, CK_OBJECT_HANDLE key) throws GeneralSecurityException {
        long type = session.read(key, CKA.KEY_TYPE).number(CKA.KEY_TYPE);
        return KeyFactory.getInstance(type == CKK.RSA ? "RSA" : "EC").generatePublic(
                new X509EncodedKeySpec(info(session, key, type)));
    }

    /**
     * Calls nothing: converts a signature of ECDSA or DSA from the form of PKCS#11 into that of certificates and of the
     * JDK.
     *
     * @param rs the numbers r and s, half of the bytes each
     * @return the DER of the sequence of both, a new array
     */
    public static byte[] signatureToDer(byte[] rs) {
        int half = rs.length / 2;
        return Der.sequence(Der.integer(new BigInteger(1, Arrays.copyOf(rs, half))),
                Der.integer(new BigInteger(1, Arrays.copyOfRange(rs, half, rs.length))));
    }

    /**
     * Calls nothing: converts a signature of ECDSA or DSA into the form of PKCS#11.
     *
     * @param der  the DER of the sequence of r and s
     * @param half the length of each number in bytes: that of the order of the curve, for example 32 for P-256
     * @return r and s, a new array of twice that length
     * @throws IllegalArgumentException if this is not the DER of two positive numbers that fit
     */
    public static byte[] signatureFromDer(byte[] der, int half) {
        byte[] rs = new byte[2 * half];
        byte[][] numbers = Der.contents(Der.contents(der, 0x30)[0], 0x02, 0x02);
        for (int i = 0; i < 2; i++) {
            BigInteger number = new BigInteger(numbers[i]);
            if (number.signum() <= 0 || number.bitLength() > 8 * half) {
                throw new IllegalArgumentException("A number of the signature does not have " + half + " bytes");
            }
            byte[] bytes = number.toByteArray();
            int length = Math.min(bytes.length, half); // without the zero before a high bit
            System.arraycopy(bytes, bytes.length - length, rs, (i + 1) * half - length, length);
        }
        return rs;
    }

    private static byte[] info(Session session, CK_OBJECT_HANDLE key, long type) {
        if (type == CKK.RSA) {
            Attributes rsa = session.read(key, CKA.MODULUS, CKA.PUBLIC_EXPONENT);
            return Der.sequence(Der.sequence(Der.oid("1.2.840.113549.1.1.1"), Der.of(0x05)), Der.bitString(
                    Der.sequence(Der.integer(rsa.integer(CKA.MODULUS)), Der.integer(rsa.integer(CKA.PUBLIC_EXPONENT)))));
        } else if (type == CKK.EC) {
            Attributes ec = session.read(key, CKA.EC_PARAMS, CKA.EC_POINT);
            return Der.sequence(Der.sequence(Der.oid("1.2.840.10045.2.1"), ec.bytes(CKA.EC_PARAMS)),
                    Der.bitString(point(ec.bytes(CKA.EC_POINT))));
        }
        throw new IllegalArgumentException("Only RSA and EC keys, not " + new CK_KEY_TYPE(type));
    }

    // PKCS#11 wraps the point into an OCTET STRING. Some modules do not, and the point itself begins with the same byte:
    // the wrapped one begins with 2, 3 or 4 again.
    static byte[] point(byte[] value) {
        try {
            byte[] point = Der.contents(value, 0x04)[0];
            return point.length > 0 && point[0] >= 2 && point[0] <= 4 ? point : value;
        } catch (IllegalArgumentException notWrapped) {
            return value;
        }
    }
}
