#pragma once

#include "LumoApi/Data.h"

#include <optional>

namespace lumo {

/// Decodes a picture and encodes it as JPEG.
///
/// Reads JPEG (baseline and progressive; grey, RGB, CMYK and what derives from them), PNG, WebP (of an
/// animation the first frame on its canvas) and, where the library is built with it, HEIC/HEIF as cameras
/// write it: one picture or a grid of tiles, coded as HEVC, with or without transparency. The orientation and
/// a colour profile that fits the result are kept, all other metadata (place, camera, comments, thumbnails)
/// is dropped, and transparency lies over white. Most JPEG pictures keep their chroma sampling; others get
/// 4:2:0, or 4:4:4 from a quality of 0.9 up.
///
/// `quality` runs from 0 to 1 and is rounded to whole hundredths, at least one; a number outside is taken for
/// the nearer end and NaN for 0.
///
/// Null for bytes that are not a picture, and for a picture out of all proportion: more than 65,500 pixels a
/// side, 2^28 in all, or 10^8 where the format makes it necessary to hold the whole picture (progressive
/// JPEG, interlaced PNG, WebP, HEIF; 8 * 10^7 in lossless WebP). Nor is one a picture that would take
/// seconds: a JPEG of more than 500 scans or 4 * 10^7 blocks in all of its scans and components (in
/// arithmetic coding a block counts ten times, and each byte of the file as six); a PNG whose pixels unpack
/// to more than 4 * 10^8 bytes (2 * 10^8 interlaced); a HEIF file of more than 16,384 pixels a side, whose
/// coded pictures are not of the size that it states, or which gives its decoder more than 1.3 * 10^8
/// samples, those of each slice's whole picture and five a byte. A JPEG that ends early, once its pixels have
/// begun, is shown as far as it goes, as picture viewers do; in the other formats such a file is not a
/// picture.
///
/// A PNG with a chunk of more than 8 MB that is not its pixels is no picture either. A profile of more than
/// 3 MiB is dropped; what else a PNG has beside pixels, profile and orientation is passed over.
///
/// Throws std::bad_alloc and nothing else. Without state: any thread may call this at any time.
std::optional<Data> jpegRepresentation(const Data& picture, double quality);

}  // namespace lumo
