// The options of the commands that work on data with a key.
package halvorn.zerlin.cli;

import picocli.CommandLine.*;

final class DataOptions {
    @Mixin TokenOptions options;
    @Mixin MechanismOptions mechanism;

    @Parameters(index = "0", paramLabel = "KEY", description = "The URI or the label of the key.") private String key;

    @Option(names = {"-i", "--input"}, paramLabel = "FILE", description = "The data; else standard input.") String input;

    Uri uri() {
        return Uri.of(key, "object");
    }
}
