#ifndef XMLDOM_BENCH_MEASURE_CLOCK_H
#define XMLDOM_BENCH_MEASURE_CLOCK_H

namespace bench {

/// The processor time that the calling thread has used.
double ProcessorSeconds();

}  // namespace bench

#endif
