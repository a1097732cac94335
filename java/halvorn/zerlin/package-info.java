/**
 * PKCS#11 (Cryptoki) for Java: the functions of a PKCS#11 library as native methods with the standard's own
 * names, arguments and return values.
 *
 * <p>Start with {@link halvorn.zerlin.Cryptoki}, which holds the functions and explains what they have in
 * common. {@link halvorn.zerlin.CTUtil} gives names to constants and finds objects by label. The other
 * classes are the arguments: holders of handles and lengths, attributes, mechanisms and information records.
 * Their public fields are read and written by the native side, by name; no native keeps an object after it
 * has returned, except the argument of {@link halvorn.zerlin.Cryptoki#C_Initialize C_Initialize}.
 */
package halvorn.zerlin;
