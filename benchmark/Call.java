// One operation, ready to be run again and again.

@FunctionalInterface
interface Call {
    void run() throws Exception;
}
