// The calls of CExpatImpl::Parse that are running. Tested by tests/parse/ExpatImpl_test.cpp, and by
// tests/consume/unloading with a plug-in.

#include <xmldom/parse/ExpatImpl.h>

#include <xmldom/base/Export.h>

xmldom::ExpatRun*& xmldom::InnermostExpatRun() {
  static XMLDOM_THREAD_PLACE __thread ExpatRun* run = nullptr;
  return run;
}
