// The calls of CExpatImpl::Parse that are running. Tested by tests/parse/ExpatImpl_test.cpp, and by
// tests/consume/unloading with a plug-in.

#include <xmldom/parse/ExpatImpl.h>

xmldom::ExpatRun*& xmldom::InnermostExpatRun() {
  static thread_local ExpatRun* run = nullptr;
  return run;
}
