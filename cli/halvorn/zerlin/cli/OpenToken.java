// A token with an open session: finds objects, and writes their URIs.
package halvorn.zerlin.cli;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.token.*;

import java.util.*;
import java.util.stream.Collectors;

final class OpenToken implements AutoCloseable {
    final Library library;
    final Slot slot;
    final CK_TOKEN_INFO info;
    final Session session;

    OpenToken(Library library, Slot slot, boolean writable) {
        this.library = library;
        this.slot = slot;
        info = slot.tokenInfo();
        session = writable ? slot.openWritableSession() : slot.openSession();
    }

    @Override
    public void close() {
        session.close();
    }

    String uri(CK_OBJECT_HANDLE object) {
        return Uri.write(info, session.read(object, CKA.CLASS, CKA.LABEL, CKA.ID));
    }

    /** Finds the one object of the URI that has one of these classes; all classes if none is given. */
    CK_OBJECT_HANDLE find(Uri uri, Long... classes) {
        Attributes wanted = uri.template();
        Failure.when(wanted.types().length == 0, Failure.USAGE, "The URI names no object: add object=, id= or type=");
        List<CK_OBJECT_HANDLE> found = session.find(wanted).stream().filter(object -> classes.length == 0
                || Arrays.asList(classes).contains(session.read(object, CKA.CLASS).number(CKA.CLASS)))
                .collect(Collectors.toList());
        if (found.size() != 1) {
            throw new Failure(Failure.NOT_FOUND, (found.isEmpty() ? "No object fits" : found.size() + " objects fit")
                    + "; \"zerlin objects\" lists the objects with their URIs"
                    + (session.isLoggedIn() ? "" : ", --login those that are private too"));
        }
        return found.get(0);
    }
}
