#ifndef XMLDOM_SUPPORT_RESULTS_H
#define XMLDOM_SUPPORT_RESULTS_H

/// Result of a COM-style member: negative means failure.
typedef int HRESULT;

/// Boolean of a COM-style member; only VARIANT_TRUE and VARIANT_FALSE are ever stored.
typedef short VARIANT_BOOL;

const VARIANT_BOOL VARIANT_TRUE = -1;
const VARIANT_BOOL VARIANT_FALSE = 0;

const HRESULT S_OK = 0;     ///< Done.
const HRESULT S_FALSE = 1;  ///< Done, and there was nothing to hand out.
/// An object could not be made, or a value could not be converted.
const HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
/// A required out-pointer was null, or an argument cannot be used.
const HRESULT E_ARGUMENT = static_cast<HRESULT>(0x80004006u);
/// A file could not be opened.
const HRESULT E_FILENOTOPENED = static_cast<HRESULT>(0x80030002u);

#endif
