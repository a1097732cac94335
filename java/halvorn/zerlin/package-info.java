/**
 * PKCS#11 (Cryptoki) for Java: the functions of a PKCS#11 library as native methods, with the standard's
 * names, arguments and return values.
 *
 * <p>Start with {@link halvorn.zerlin.Cryptoki}. It has the functions, and it explains the words and the
 * rules that hold for all of them. {@link halvorn.zerlin.CTUtil} names constants and finds objects by their
 * label. The other classes are arguments: holders of handles and lengths, attributes, mechanisms and
 * information records. The natives read and write their public fields by name. No native keeps an object
 * after it has returned, except the argument of {@link halvorn.zerlin.Cryptoki#C_Initialize C_Initialize}.
 */
package halvorn.zerlin;
