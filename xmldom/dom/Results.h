#ifndef XMLDOM_DOM_RESULTS_H
#define XMLDOM_DOM_RESULTS_H

#include <xmldom/support/variant.h>

// Names of the results of members. A platform whose support layer declares one of them already must
// also define a macro of that name, for example `#define S_OK S_OK`; it is not declared here then.

#ifndef VARIANT_TRUE
const VARIANT_BOOL VARIANT_TRUE = -1;  ///< True.
#endif
#ifndef VARIANT_FALSE
const VARIANT_BOOL VARIANT_FALSE = 0;  ///< False.
#endif

#ifndef S_OK
const HRESULT S_OK = 0;  ///< The call did what it was asked.
#endif
#ifndef S_FALSE
const HRESULT S_FALSE = 1;  ///< The call succeeded, and there was nothing to hand out.
#endif
#ifndef E_FAIL
/// An object could not be made, or a value could not be converted.
const HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
#endif
#ifndef E_ARGUMENT
/// A required out-pointer was null, or an argument cannot be used.
const HRESULT E_ARGUMENT = static_cast<HRESULT>(0x80004006u);
#endif
#ifndef E_FILENOTOPENED
/// A file could not be opened.
const HRESULT E_FILENOTOPENED = static_cast<HRESULT>(0x80030002u);
#endif

#endif
