// Turns the exceptions that work on a document can throw into a message and an exit status.
// The library throws pointers to CLogException; memory that runs out throws std::bad_alloc.
// Tested by tests/tool/Trouble_test.cpp.

#include <tools/command/Trouble.h>

#include <tools/io/Diagnostics.h>
#include <tools/io/Output.h>

#include <xmldom/support/LogException.h>

#include <memory>
#include <new>
#include <stdexcept>

namespace tool {

ExitStatus SayTrouble(const std::string& name, const std::function<ExitStatus()>& work) {
  std::string reason;
  try {
    return work();
  } catch (CLogException* raised) {
    const std::unique_ptr<CLogException> exception(raised);
    reason = std::string(exception->GetWhere()) + ": " + exception->GetMessage();
  } catch (const std::length_error&) {
    reason = "the result is too large";
  } catch (const std::bad_alloc&) {
    reason = "out of memory";
  } catch (const OutputError&) {
    throw;
  } catch (const UsageError&) {
    throw;
  } catch (const std::exception& error) {
    reason = error.what();
  }
  ComplainAbout(name, reason);
  return ExitStatus::kTrouble;
}

}  // namespace tool
