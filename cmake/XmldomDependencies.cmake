# Finds what a part of the project is built with, or says which Debian package has it and which option
# leaves the part out.

# xmldom_require(PACKAGE DEBIAN_PACKAGE WHAT_NEEDS_IT [OPTION]): a macro, since what is found is set for
# the folder that asks.
macro(xmldom_require package debian_package needed_by)
  find_package(${package} QUIET)
  if(NOT ${package}_FOUND)
    set(advice "${needed_by} needs ${package}, which is not found here.\n"
      "On Debian: apt-get install ${debian_package}")
    if(${ARGC} GREATER 3)
      list(APPEND advice "\nWithout it: cmake ... -D${ARGV3}=OFF")
    endif()
    message(FATAL_ERROR ${advice})
  endif()
endmacro()
