// The class that Library loads together with the jar, in one class loader.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import java.util.function.Supplier;

/** Makes one Cryptoki call and asks for one name. */
public final class LibraryGuest implements Supplier<String> {
    /** Called by reflection. */
    public LibraryGuest() {
    }

    @Override
    public String get() {
        CK_RV rv = Cryptoki.C_GetAttributeValue(new CK_SESSION_HANDLE(), new CK_OBJECT_HANDLE(),
                new CK_ATTRIBUTE[0], 0);
        return rv + ", " + CTUtil.CTU_GetErrorValue("PIN incorrect".getBytes());
    }
}
