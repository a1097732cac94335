// A token with an open session: finds objects, and writes their URIs.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.token.*;

import java.util.*;

final class OpenToken {
    final Library library;
    final Slot slot;
    final CK_TOKEN_INFO info;
    final Session session;

    OpenToken(Library library, Slot slot, CK_TOKEN_INFO info, Session session) {
        this.library = library;
        this.slot = slot;
        this.info = info;
        this.session = session;
    }

    String uri(CK_OBJECT_HANDLE object) {
        return Uri.write(info, session.read(object, CKA.CLASS, CKA.LABEL, CKA.ID));
    }

    /** Finds the one object of the URI that has one of these classes; all classes if none is given. */
    CK_OBJECT_HANDLE find(Uri uri, long... classes) {
        Attributes wanted = uri.template();
        if (wanted.types().length == 0) {
            throw new Failure(Failure.USAGE, "The URI names no object: add object=, id= or type=");
        }
        List<CK_OBJECT_HANDLE> found = new ArrayList<>();
        for (CK_OBJECT_HANDLE object : session.find(wanted)) {
            long objectClass = session.read(object, CKA.CLASS).number(CKA.CLASS);
            if (classes.length == 0 || Arrays.stream(classes).anyMatch(one -> one == objectClass)) {
                found.add(object);
            }
        }
        if (found.size() != 1) {
            throw new Failure(Failure.NOT_FOUND, (found.isEmpty() ? "No object fits" : found.size() + " objects fit")
                    + "; \"zerlin objects\" lists the objects with their URIs"
                    + (session.isLoggedIn() ? "" : ", --login those that are private too"));
        }
        return found.get(0);
    }
}
