/**
 * The parameters of mechanisms, for {@link halvorn.zerlin.CK_MECHANISM}.
 *
 * <p>Each class has the fields of its PKCS#11 structure. The natives read the fields, so they may be set one
 * by one; the constructor with arguments sets the lengths that belong to the arrays. A length that must equal
 * its array's and does not aborts the process, as the fields' descriptions say.
 *
 * <p>{@link halvorn.zerlin.Cryptoki#C_GenerateKey C_GenerateKey},
 * {@link halvorn.zerlin.Cryptoki#C_GenerateKeyPair C_GenerateKeyPair},
 * {@link halvorn.zerlin.Cryptoki#C_UnwrapKey C_UnwrapKey} and
 * {@link halvorn.zerlin.Cryptoki#C_DeriveKey C_DeriveKey} write the results that a mechanism returns into the
 * parameter object's existing arrays and objects; no other native changes a parameter.
 */
package halvorn.zerlin.params;
