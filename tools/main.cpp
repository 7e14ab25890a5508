// The command-line tool `xmldom`: finds the command that its arguments name, runs it, and ends with
// the exit status of that command.
// Tested by tests/tool/command_line_test.bash.

#include <tools/command/CommandLine.h>
#include <tools/commands/Commands.h>
#include <tools/io/Diagnostics.h>
#include <tools/io/Output.h>
#include <tools/io/StandardOutput.h>

#include <expat.h>
#include <unistd.h>
#include <xmldom/xmldom.h>

#include <csignal>
#include <exception>
#include <new>
#include <string>

namespace tool {

namespace {

const char kAbout[] = "XML documents: check, write, search, show, edit, compare.";
const char kClosing[] =
    "'xmldom COMMAND --help' explains a command.\n"
    "Exit status: 0 done, found or well-formed; 1 the answer is no; 2 trouble.\n"
    "\n"
    "Example: xmldom value //comment /usr/share/mime/packages/*.xml";

/// The versions that somebody who reports a fault has to tell. Expat is a shared library, so that
/// the one that runs need not be the one that the tool was built with.
std::string Version() {
  const XML_Expat_Version expat = XML_ExpatVersionInfo();
  return "xmldom " XMLDOM_VERSION
         "\n"
         "built with libxmldom " XMLDOM_VERSION " (so-version " XMLDOM_SOVERSION
         "), running with Expat " +
         std::to_string(expat.major) + '.' + std::to_string(expat.minor) + '.' +
         std::to_string(expat.micro);
}

/// Whether an allocation of operator new has failed. CLI11 makes the help in streams, which take
/// the exception for themselves, and the help then lacks text.
bool l_wasMemoryOut = false;

/// Standard output is for results alone, and reading a text must not cost more than its size.
void SwitchDebugLinesOff() {
  // That they are off is logged, and nothing that the user has to know.
  CLogger::SetSink([](const CLogEvent&, void*) {}, nullptr);
  SetDebugEntities(false);
}

ExitStatus Execute(int argc, char** argv, Output& output) {
  CommandLine commandLine({"xmldom", kAbout, kClosing, Version()}, Commands());
  try {
    std::string answer;
    Command* command = commandLine.Parse(argc, argv, answer);
    if (command == nullptr) {
      if (l_wasMemoryOut) throw std::bad_alloc();
      output.Write(answer);
      return ExitStatus::kDone;
    }
    SwitchDebugLinesOff();
    SayLogEvents();
    command->Check();
    return command->Run({output, commandLine.IsVerbose()});
  } catch (const UsageError& error) {
    Complain(error.what());
    Complain("'" + commandLine.HelpCommand() + "' explains more");
    return ExitStatus::kTrouble;
  }
}

/// Ends the tool when the library asserts that there is a parser, or when an exception finds nobody
/// who catches it: nothing but memory that is out brings it there.
void EndWithoutMemory() {
  ComplainOfMemory();
  _exit(static_cast<int>(ExitStatus::kTrouble));
}

/// Runs before the objects with static storage are made, which need memory too.
__attribute__((constructor(101))) void ExpectLackOfMemory() {
  std::set_terminate(EndWithoutMemory);
  std::signal(SIGABRT, [](int) { EndWithoutMemory(); });
  std::set_new_handler([] {
    l_wasMemoryOut = true;
    throw std::bad_alloc();
  });
}

int Run(int argc, char** argv) {
  // Without this signal, a write beyond the size limit of files fails, and is reported like any
  // other failed write. Where a pipe is closed, in contrast, whoever reads has seen enough: the
  // tool ends by that signal and says nothing, unless its caller ignores the signal.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    Output output(KeepStandardOutput());
    const ExitStatus status = Execute(argc, argv, output);
    output.Finish();
    return static_cast<int>(status);
  } catch (const std::bad_alloc&) {
    ComplainOfMemory();
    return static_cast<int>(ExitStatus::kTrouble);
  } catch (const std::exception& error) {
    Complain(error.what());
    return static_cast<int>(ExitStatus::kTrouble);
  }
}

}  // namespace

}  // namespace tool

// A message may itself need memory that is out.
int main(int argc, char** argv) {
  try {
    return tool::Run(argc, argv);
  } catch (const std::bad_alloc&) {
    tool::ComplainOfMemory();
    return static_cast<int>(tool::ExitStatus::kTrouble);
  }
}
