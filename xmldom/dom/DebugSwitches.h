#ifndef XMLDOM_DOM_DEBUGSWITCHES_H
#define XMLDOM_DOM_DEBUGSWITCHES_H

// Switches for debugging: what is shown while documents are read and written. All threads share
// them. They are defined where they are asked: in query/XMLNodeSelect.cpp,
// text/EntityTranslation.cpp and text/XMLNodeXML.cpp.

#include <xmldom/base/Export.h>

/// Posts a log event that says whether path debugging is on. It has no other effect: queries print
/// nothing either way.
/// Effects: a log event (type 18, severity 7).
XMLDOM_API void SetDebugXPATH(bool on);

/// Switches the debug line: while it is on, reading a text that holds references prints a line to
/// standard output, with all of the text that has been read so far. It is on by default. While it
/// is off, nothing is formatted or printed, so that reading is linear; unknown references are
/// logged all the same. Effects: a log event (type 18, severity 7).
XMLDOM_API void SetDebugEntities(bool on);

/// Switches the debug decoration of written start tags: the node's address and reference count.
XMLDOM_API void SetDispAddr(bool on);

/// Whether start tags carry the debug decoration. Change it with SetDispAddr, which other threads
/// may do at the same time.
extern XMLDOM_API bool g_bDispAddr;

#endif
