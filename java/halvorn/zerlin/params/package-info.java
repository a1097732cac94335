/**
 * The parameters of mechanisms, for {@link halvorn.zerlin.CK_MECHANISM}. {@link halvorn.zerlin.Cryptoki}
 * explains the words.
 *
 * <p>Each class has the fields of its PKCS#11 structure. The natives read the fields, so they may be set one
 * by one. The constructor with arguments sets each length to that of its array. Where the description of a
 * length says so, a wrong length aborts the process. A null array reaches the library as a null pointer,
 * unless its description says otherwise.
 *
 * <p>{@link halvorn.zerlin.Cryptoki#C_GenerateKey C_GenerateKey},
 * {@link halvorn.zerlin.Cryptoki#C_GenerateKeyPair C_GenerateKeyPair},
 * {@link halvorn.zerlin.Cryptoki#C_UnwrapKey C_UnwrapKey} and
 * {@link halvorn.zerlin.Cryptoki#C_DeriveKey C_DeriveKey} write the results that a mechanism returns into the
 * existing arrays and objects of the parameter. No other native changes a parameter.
 */
package halvorn.zerlin.params;
