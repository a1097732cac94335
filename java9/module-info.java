/**
 * PKCS#11 (Cryptoki) for Java: the functions of a PKCS#11 library as native methods. Start with
 * {@link halvorn.zerlin.Cryptoki}.
 */
module halvorn.zerlin {
    exports halvorn.zerlin;
    exports halvorn.zerlin.constants;
    exports halvorn.zerlin.params;
    exports halvorn.zerlin.token;
}
