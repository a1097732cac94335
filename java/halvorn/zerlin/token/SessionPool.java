// Sessions for many threads, which come back by themselves after they were lost.
package halvorn.zerlin.token;

import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.CryptokiException;
import halvorn.zerlin.constants.CKR;

import java.util.ArrayDeque;
import java.util.Collections;
import java.util.Deque;
import java.util.Set;
import java.util.WeakHashMap;
import java.util.concurrent.Semaphore;
import java.util.function.Consumer;

/**
 * Read-only sessions with one token for any number of threads. The pool opens a session when it needs one and keeps it
 * for the next work; it starts no thread.
 *
 * <pre>{@code
 * SessionPool pool = new SessionPool(slot, 8, session -> {
 *     session.login(CKU.USER, pin());       // asks for a new array each time: login wipes it
 *     key = session.findOne(wanted);        // a volatile field
 * });
 * byte[] signature = pool.runAgainIfLost(session -> session.sign(mechanism, key, data));
 * }</pre>
 *
 * <p>One more session stays open and holds the login. The program's {@code start} gets it whenever nobody is logged in,
 * first for the first work: it logs in and looks up handles, because both die together. If {@code start} throws, the
 * pool closes, so that no PIN is tried twice. While somebody is logged in already, {@code start} is not
 * called: let only the pool log in. The pool looks before each work ({@code C_GetSessionInfo} on that session), because
 * a token that has logged out does not find private objects and does not say so.
 */
public final class SessionPool implements AutoCloseable {
    private final Slot slot;
    private final Consumer<Session> start;
    private final Semaphore places;
    private final Deque<Session> idle = new ArrayDeque<>();
    private final Set<Session> known = Collections.newSetFromMap(new WeakHashMap<>());
    private Session keeper = new Session(new CK_SESSION_HANDLE()); // closed
    private long logins;
    private boolean closed;

    /**
     * What a thread does with a session. It may throw; the session is closed then.
     *
     * @param <T> the result
     * @param <E> what it throws
     */
    public interface Work<T, E extends Exception> {
        /**
         * Works with a session.
         *
         * @param session a session for this thread alone, until this method returns
         * @return the result
         * @throws E what the work throws
         */
        T run(Session session) throws E;
    }

    /**
     * Calls nothing. The first work opens the first sessions.
     *
     * @param slot  the slot of the token
     * @param size  the greatest number of sessions in use at a time; at least 1
     * @param start logs in and looks up handles; called by the thread of a work, never by two threads at once;
     *              it must not call the pool
     */
    public SessionPool(Slot slot, int size, Consumer<Session> start) {
        this.slot = slot;
        this.start = start;
        places = new Semaphore(size, true);
    }

    /**
     * Calls {@code C_GetSessionInfo}, if necessary {@code C_OpenSession} and what {@code start} calls, then the work.
     * Waits while all sessions are in use, also if the thread is interrupted. If the work throws, {@code C_CloseSession}
     * follows, unless the session was lost: it may be in any state, and is never used again.
     *
     * @param work what to do; it must not call the pool
     * @param <T>  its result
     * @param <E>  what it throws
     * @return what the work returns
     * @throws E what the work throws
     * @throws IllegalStateException if the pool is closed
     * @throws CryptokiException if no session can be opened
     */
    public <T, E extends Exception> T run(Work<T, E> work) throws E {
        return run(work, false);
    }

    /**
     * Calls what {@link #run} calls, and all of it once more, with a new session, if the work threw a
     * {@link CryptokiException} because its session or the login was lost: {@code CKR_SESSION_HANDLE_INVALID},
     * {@code CKR_SESSION_CLOSED}, {@code CKR_DEVICE_REMOVED}, {@code CKR_USER_NOT_LOGGED_IN}; or
     * {@code CKR_KEY_HANDLE_INVALID} or {@code CKR_OBJECT_HANDLE_INVALID} if {@code start} was called meanwhile. The
     * work must be one that may be done twice.
     *
     * @param work what to do; it must not call the pool, and must read handles that {@code start} looks up each time
     * @param <T>  its result
     * @param <E>  what it throws
     * @return what the work returns
     * @throws E what the work throws
     * @throws IllegalStateException if the pool is closed
     * @throws CryptokiException if no session can be opened
     */
    public <T, E extends Exception> T runAgainIfLost(Work<T, E> work) throws E {
        return run(work, true);
    }

    /**
     * Calls {@code C_CloseSession} for each session that is not in use, and once its work has ended for each other one.
     * A second {@code close} does nothing.
     */
    @Override
    public synchronized void close() {
        closed = true;
        idle.forEach(session -> Cryptoki.C_CloseSession(session.handle));
        idle.clear();
        keeper.close();
    }

    private <T, E extends Exception> T run(Work<T, E> work, boolean mayRepeat) throws E {
        places.acquireUninterruptibly();
        try {
            for (boolean isFirst = true;; isFirst = false) {
                Session session;
                long login;
                synchronized (this) {
                    login = logIn();
                    // An idle session may be lost too, so the second time it is a new one.
                    session = isFirst && !idle.isEmpty() ? idle.pop() : open();
                }
                try {
                    T result = work.run(session);
                    giveBack(session, null);
                    return result;
                } catch (Throwable failed) {
                    giveBack(session, failed);
                    if (!mayRepeat || !isFirst || !wasLost(failed, login)) {
                        throw failed;
                    }
                }
            }
        } finally {
            places.release();
        }
    }

    // Sees to it that somebody is logged in, and returns the number of logins. Only one thread at a time is here.
    private long logIn() {
        if (closed) {
            throw new IllegalStateException("The session pool is closed");
        }
        try {
            if (keeper.isLoggedIn()) {
                return logins;
            }
        } catch (CryptokiException e) {
            if (!Calls.isLost(e)) {
                throw e;
            }
            keeper = open();
        }
        if (!keeper.isLoggedIn()) {
            try {
                start.accept(keeper);
                logins++;
            } catch (Throwable failed) {
                close();
                throw failed;
            }
        }
        return logins;
    }

    // If an older session had the same number, it was lost: it loses its handle, so that it touches no other one.
    private Session open() {
        Session session = slot.openSession();
        known.stream().filter(s -> s.handle.m_value == session.handle.m_value).forEach(s -> s.handle = new CK_SESSION_HANDLE());
        known.add(session);
        return session;
    }

    // A session that is closed, has lost its handle or was lost in its work is not used again.
    private synchronized void giveBack(Session session, Throwable failed) {
        if (failed == null && !closed && session.handle.m_value != 0) {
            idle.push(session);
        } else if (!Calls.isLost(failed)) {
            Cryptoki.C_CloseSession(session.handle);
        }
    }

    private synchronized boolean wasLost(Throwable failed, long login) {
        return Calls.isLost(failed) || Calls.is(failed, CKR.USER_NOT_LOGGED_IN)
            || Calls.is(failed, CKR.KEY_HANDLE_INVALID, CKR.OBJECT_HANDLE_INVALID) && logIn() != login;
    }
}
