#include "bench/Timings.h"

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv) || !bench::peersAgree()) return 1;
  bench::registerTextTimings();
  bench::registerShareTimings();
  bench::registerIncomingTimings();
  bench::registerJSONTimings();
  bench::registerPictureTimings();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
