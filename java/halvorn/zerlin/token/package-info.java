/**
 * A thin layer above the natives for everyday programs: slots and sessions as objects, attributes by their types,
 * outputs of any length, a pool of sessions.
 *
 * <pre>{@code
 * try (Library library = Library.open(); Session session = library.token("CA").openWritableSession()) {
 *     session.login(CKU.USER, console.readPassword("PIN: "));
 *     CK_OBJECT_HANDLE key = session.generateKey(new CK_MECHANISM(CKM.AES_KEY_GEN), Attributes.of(CKO.SECRET_KEY)
 *             .with(CKA.VALUE_LEN, 32).with(CKA.LABEL, "files").yes(CKA.TOKEN, CKA.SENSITIVE, CKA.ENCRYPT));
 *     byte[] iv = session.random(16);
 *     out.write(iv);
 *     session.encrypt(new CK_MECHANISM(CKM.AES_CBC_PAD, iv), key, in, out);
 * }
 * }</pre>
 *
 * <ul>
 * <li>Nothing is hidden. The description of each method begins with the functions that it calls, in order. A template
 *     holds what the caller put there.
 * <li>Mechanisms are {@link halvorn.zerlin.CK_MECHANISM}s and keys {@link halvorn.zerlin.CK_OBJECT_HANDLE}s, so any line
 *     of a program may be a native of {@link halvorn.zerlin.Cryptoki}. For what is not here, call the native: operation
 *     states, the dual functions, signatures with recovery, slot events, nested templates.
 * <li>Every return value that a method does not expect is a {@link halvorn.zerlin.CryptokiException} that names the
 *     call. {@code verify} expects that a signature is wrong, {@code read} that an attribute cannot be read.
 * <li>Who opens closes: a library, a session or a pool, in reverse order, once; a second {@code close} does nothing.
 * <li>An operation that was begun is ended, also when a stream throws. Streams are never closed.
 * <li>An array with a PIN is wiped, also if the call fails. Buffers with clear text are wiped. {@code toString} shows no
 *     secret.
 * <li>A {@link halvorn.zerlin.token.Session} is for one thread at a time, a {@link halvorn.zerlin.token.SessionPool} for
 *     any number.
 * </ul>
 *
 * <p>The guide, {@code docs/guide.md} beside the sources and in the package {@code libzerlin-doc}, goes through everyday
 * tasks.
 */
package halvorn.zerlin.token;
