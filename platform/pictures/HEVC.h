#pragma once

#include "platform/pictures/Bytes.h"

namespace lumo::image {

/// What the units of an HEVC picture tell of the work that its decoder will have.
struct HEVCPicture {
  std::uint64_t width = 0, height = 0;  // the largest that a parameter set claims
  std::uint64_t slices = 0;             // each may cover the whole picture
  std::uint64_t samplesOf2Pixels = 2;   // 2 in grey, 3 at the usual sampling of colours, 6 at full

  /// Units from a decoder configuration ("hvcC"); false where it is damaged.
  bool addConfiguration(Bytes content);
  /// Units with their lengths before them, as a picture's data has them; false where one is damaged.
  bool addUnits(Bytes units);

 private:
  bool addUnit(Bytes unit);
};

}  // namespace lumo::image
