/**
 * The PKCS#11 constants. The plain constants are {@code long}s in the classes that have the name of their
 * PKCS#11 prefix ({@link halvorn.zerlin.constants.CKA CKA}, {@link halvorn.zerlin.constants.CKM CKM},
 * {@link halvorn.zerlin.constants.CKR CKR}, ...), without that prefix: {@code CKM_AES_CBC} is
 * {@code CKM.AES_CBC}. The classes whose names begin with {@code CK_} are mutable holders of one such value,
 * which the natives read and write; see {@link halvorn.zerlin.constants.TypedValue}.
 *
 * <p>Every class of plain constants looks names and values up: {@code CKM.of("CKM_AES_CBC")} and
 * {@code CKM.nameOf(0x1082)}. No look-up needs the native library.
 */
package halvorn.zerlin.constants;
