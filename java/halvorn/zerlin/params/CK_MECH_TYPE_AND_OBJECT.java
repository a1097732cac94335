// The parameter of mechanisms that work with another mechanism and an object.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;

/**
 * A mechanism and an object: the parameter of {@code CKM_ENCODE_X_509_LOCAL_CERT}, a vendor mechanism.
 */
public class CK_MECH_TYPE_AND_OBJECT {
    /** The mechanism to work with; null reaches the library as {@code CK_UNAVAILABLE_INFORMATION}. */
    public CK_MECHANISM_TYPE mechanism = new CK_MECHANISM_TYPE();
    /**
     * The handle of the object to work with; null reaches the library as {@code CK_UNAVAILABLE_INFORMATION}.
     */
    public CK_OBJECT_HANDLE hObj = new CK_OBJECT_HANDLE();

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_MECH_TYPE_AND_OBJECT() {
    }

    /**
     * Creates a parameter.
     *
     * @param mechanism the mechanism, a value of {@link halvorn.zerlin.constants.CKM CKM}
     * @param hObj      the object
     */
    public CK_MECH_TYPE_AND_OBJECT(long mechanism, CK_OBJECT_HANDLE hObj) {
        this.mechanism = new CK_MECHANISM_TYPE(mechanism);
        this.hObj = hObj;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_MECH_TYPE_AND_OBJECT[mechanism=" + mechanism + ", hObj=" + hObj + "]";
    }
}
