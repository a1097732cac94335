// A command that has commands, such as "zerlin key".
package halvorn.zerlin.cli;

import picocli.CommandLine.*;
import picocli.CommandLine.Model.CommandSpec;

abstract class Group implements Runnable {
    @Spec private CommandSpec spec;

    @Option(names = {"-h", "--help"}, usageHelp = true, description = "Show this help.") private boolean help;

    @Override
    public final void run() {
        throw new Failure(Failure.USAGE, "Which command? \"" + spec.qualifiedName() + " --help\" lists them");
    }
}
