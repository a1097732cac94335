// The options of the commands that work on data with a key.
package halvorn.zerlin.cli;

import picocli.CommandLine.*;

final class DataOptions {
    @Mixin TokenOptions options;
    @Mixin MechanismOptions mechanism;
    @Mixin KeyCommands.ObjectName key;

    @Option(names = {"-i", "--input"}, paramLabel = "FILE", description = "The data; else standard input.") String input;
}
