#include "bench/Payloads.h"
#include "bench/Timings.h"
#include "bench/plain/Plain.h"
#include "platform/pictures/Image.h"

namespace bench {

namespace {

void registerPicture(const std::string& name, const lumo::Data& picture) {
  const double quality = profileQuality(picture);
  // They take long enough for a few repetitions to do.
  timing("avatar/" + name + "/lumo", [picture, quality] {
    return lumo::jpegRepresentation(picture, quality);
  })->Repetitions(3);
  timing("avatar/" + name + "/plain", [picture, quality] {
    return plain::reencoded(picture, quality);
  })->Repetitions(3);
}

}  // namespace

void registerPictureTimings() {
  registerPicture("12 megapixels", picture12());
  registerPicture("48 megapixels", picture48());
}

}  // namespace bench
