// What the parameter classes share: the length of an array, and its description without its content, which
// may be secret.
package halvorn.zerlin.params;

final class Bytes {
    private Bytes() {
    }

    static int length(byte[] bytes) {
        return bytes == null ? 0 : bytes.length;
    }

    static String describe(byte[] bytes) {
        return bytes == null ? "null" : bytes.length + " bytes";
    }
}
