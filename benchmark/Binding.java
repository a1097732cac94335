// The operations that each of the two bindings offers to the benchmark. A binding object owns a session and all
// arrays that its calls use. It is created in the thread that runs them, so that threads share no cache lines.
//
// On both sides a call creates the objects for its results (records, handles, the template to be filled); inputs
// and byte buffers are created once.

interface Binding {
    int DATA = 1024;
    int RANDOM = 32;
    int DIGEST = 32;
    int SIGNATURE = 256;
    int IV = 16;
    int LABEL = 16;
    int ID = 8;
    int MECHANISMS = 40;
    int FOUND = 10;
    long SLOT = 0;
    long KEY = 1;

    Call call(Operation operation);

    /** Returns a C_Encrypt of that many bytes. */
    Call encrypt(int bytes);

    /** Returns a C_SetAttributeValue of that many attributes. */
    Call setAttributes(int count);

    /** Returns a C_GetAttributeValue of that many attributes. */
    Call getAttributes(int count);
}
