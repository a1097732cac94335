// The twelve operations that are timed with both bindings.

enum Operation {
    SESSION_INFO("C_GetSessionInfo"),
    TOKEN_INFO("C_GetTokenInfo"),
    MECHANISM_LIST("C_GetMechanismList of 40"),
    RANDOM("C_GenerateRandom of 32 bytes"),
    DIGEST("C_DigestInit + C_Digest of 1 KiB"),
    ENCRYPT("C_EncryptInit with IV + C_Encrypt of 1 KiB"),
    SIGN("C_SignInit + C_Sign of 1 KiB"),
    GET_ATTRIBUTES("C_GetAttributeValue of 5"),
    SEARCH("C_FindObjectsInit, C_FindObjects of 10, final"),
    GENERATE_KEY("C_GenerateKey with 8 attributes"),
    SESSION("C_OpenSession + C_CloseSession"),
    SIGN_PSS("C_SignInit with PSS parameters + C_Sign");

    final String text;

    Operation(String text) {
        this.text = text;
    }
}
