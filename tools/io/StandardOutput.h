#ifndef XMLDOM_TOOLS_IO_STANDARDOUTPUT_H
#define XMLDOM_TOOLS_IO_STANDARDOUTPUT_H

namespace tool {

/// Result: a descriptor of its own for the real standard output, or -1 when it is closed. Results
/// go there, because a file that is opened while standard output is closed gets the number of that.
int KeepStandardOutput();

}  // namespace tool

#endif
