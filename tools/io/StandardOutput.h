#ifndef XMLDOM_TOOLS_IO_STANDARDOUTPUT_H
#define XMLDOM_TOOLS_IO_STANDARDOUTPUT_H

namespace tool {

/// Result: a descriptor of its own for the real standard output, or -1 when it is closed.
int KeepStandardOutput();

/// Sends what the library prints to standard output to standard error when `show` is set, and
/// nowhere otherwise. Results must have been kept apart before.
void DivertStandardOutput(bool show);

}  // namespace tool

#endif
