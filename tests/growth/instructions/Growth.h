#ifndef XMLDOM_TESTS_GROWTH_INSTRUCTIONS_GROWTH_H
#define XMLDOM_TESTS_GROWTH_INSTRUCTIONS_GROWTH_H

#include <string>
#include <vector>

/// Counts the instructions of what runs while it lives. A row makes one, after it has prepared what
/// it works on and before it checks what came of it.
class Counted {
 public:
  Counted();
  ~Counted();

  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
};

/// An operation of the library on the shape that is its worst, or one of those.
struct Growing {
  const char* operation;
  const char* shape;
  /// The smaller of the two; the other is four times as large. Where single blocks of so many bytes
  /// are copied, it is 20000 at least: the C library copies smaller ones in another way, which
  /// takes fewer instructions for each byte.
  int size;
  void (*run)(int size);  ///< Ends the program when what came of it is wrong.
  /// Why more than five times the instructions are right: the words in bold that begin the item of
  /// docs/limits.md which tells of it. Null where they would be wrong.
  const char* exception;
};

/// Ends the program when a row did something else than it should have.
void Require(bool condition);

/// How many log events have been posted since the program began.
unsigned long LogEvents();

/// `text`, so many times.
std::string Times(int count, const std::string& text);

// The rows, by subject.

std::vector<Growing> BuildingRows();
std::vector<Growing> ChainRows();
std::vector<Growing> EditingRows();
std::vector<Growing> ListRows();
std::vector<Growing> LoadingRows();
std::vector<Growing> ReadingRows();
std::vector<Growing> SelectingRows();
std::vector<Growing> SupportRows();
std::vector<Growing> WritingRows();
/// Those after which the owners of siblings are unknown. They have to be the last, because all that
/// follows takes longer.
std::vector<Growing> OwnerRows();

#endif
