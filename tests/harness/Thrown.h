#ifndef XMLDOM_TESTS_HARNESS_THROWN_H
#define XMLDOM_TESTS_HARNESS_THROWN_H

#include <xmldom/support/LogException.h>

#include <string>

/// The CLogException* that leaves `call`, as "where: message", with the detail, if any, on the next
/// line; empty when none does.
template <class Call>
std::string Thrown(Call call) {
  try {
    call();
  } catch (CLogException* exception) {
    std::string text = std::string(exception->GetWhere()) + ": " + exception->GetMessage();
    if (exception->GetDetail() != nullptr) text += std::string("\n") + exception->GetDetail();
    delete exception;
    return text;
  }
  return "";
}

#endif
