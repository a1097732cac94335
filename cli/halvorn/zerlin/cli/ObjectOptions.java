// The options of the commands that work on one object.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_OBJECT_HANDLE;

import picocli.CommandLine.Parameters;

class ObjectOptions extends TokenOptions {
    @Parameters(index = "0", paramLabel = "OBJECT", description = "Its URI or its label.") private String name;

    /** What is done with an object on an open token. */
    interface ObjectWork {
        void run(OpenToken token, CK_OBJECT_HANDLE object) throws Exception;
    }

    /** Opens the token, and finds the object among those of some classes. */
    void open(boolean writable, boolean needsLogin, ObjectWork work, Long... classes) throws Exception {
        Uri uri = Uri.of(name, "object");
        open(uri, writable, needsLogin, token -> work.run(token, token.find(uri, classes)));
    }
}
