#ifndef XMLDOM_BENCH_MEASURE_NULLOUTPUT_H
#define XMLDOM_BENCH_MEASURE_NULLOUTPUT_H

namespace bench {

/// Sends standard output to the null device for as long as it lives, below the C library: debug
/// lines are made and written, but nothing waits for a terminal or a disk.
class NullOutput {
 public:
  NullOutput();
  ~NullOutput();

  NullOutput(const NullOutput&) = delete;
  NullOutput& operator=(const NullOutput&) = delete;

 private:
  int m_saved;
};

}  // namespace bench

#endif
