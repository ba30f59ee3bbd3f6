// HEIF files put together so that a decoder would come to no end, and what is kept of those from cameras.

#include "LumoApi/Base64.h"
#include "platform/pictures/Codec.h"
#include "platform/pictures/Image.h"
#include "support/Pictures.h"
#include "tests/platform/SampleHEIF.h"

#include <gtest/gtest.h>

#ifdef LUMOAPI_HAVE_HEIF
#include <libheif/heif.h>
#endif

namespace lumo {
namespace {

std::string two(std::size_t number) { return bigEndian(number).substr(2); }
std::string box(const std::string& name, const std::string& content) {
  return bigEndian(content.size() + 8) + name + content;
}

struct Item {
  std::string type, content;
  std::string properties;                    // numbers, counted from 1
  std::string refersAs = {}, refersTo = {};  // items, counted from 1
};

const std::string kSample(base64DecodedData(kHEIF).value().view());
const std::string kTile = kSample.substr(0x1D1, 0xA1);  // 64 x 64 pixels
const std::string kUnits = kSample.substr(kSample.find("hvcC") + 4, 0x76 - 8);
/// The parameter set of a picture of 704 x 504 pixels.
const std::string kLargerSize =
    "\x42\1\1\3\x70\0\0\3\0\x90\0\0\3\0\0\3\0\x5A\xA0\5\x82\0\x80\x77\x3E\x5B\xA4\xE4\xA4\xB9\xB8\x10\x10\x30\x20"s;

std::string size(std::size_t width, std::size_t height) {
  return box("ispe", bigEndian(0) + bigEndian(width) + bigEndian(height));
}

const std::string kTurn = box("irot", "\1");
// 1 and 2 are the size and the parameters of the tile.
const std::string kProperties =
    size(64, 64) + box("hvcC", kUnits) + kTurn + size(32, 32) + size(10'001, 10'000) +
    box("hvcC", kUnits.substr(0, 22) + "\1\x21\0\1"s + two(kLargerSize.size()) + kLargerSize);

Data heif(const std::vector<Item>& items, const std::string& more = "") {
  std::string infos, places, contents, associations, references;
  for (std::size_t place = 0; place < items.size(); ++place) {
    const Item& item = items[place];
    const std::string id = two(place + 1);
    infos += box("infe", "\2\0\0\0"s + id + "\0\0"s + item.type + '\0');
    places += id + "\0\1\0\0\0\1"s + bigEndian(contents.size()) + bigEndian(item.content.size());
    contents += item.content;
    associations += id + static_cast<char>(item.properties.size()) + item.properties;
    std::string list;
    for (const char other : item.refersTo) list += two(static_cast<unsigned>(other));
    if (!list.empty()) references += box(item.refersAs, id + two(list.size() / 2) + list);
  }
  return Data(
      box("ftyp", "heic\0\0\0\0mif1heic"s) +
      box("meta", "\0\0\0\0"s + box("hdlr", std::string(8, '\0') + "pict" + std::string(13, '\0')) +
                      box("pitm", "\0\0\0\0\0\1"s) + box("idat", contents) +
                      box("iloc", "\1\0\0\0\x44\0"s + two(items.size()) + places) +
                      box("iinf", "\0\0\0\0"s + two(items.size()) + infos) +
                      box("iprp", box("ipco", kProperties + more) +
                                      box("ipma", bigEndian(0) + bigEndian(items.size()) + associations)) +
                      box("iref", bigEndian(0) + references)));
}

std::string grid(std::size_t side, int columns = 1) {
  return "\0\0\0"s + static_cast<char>(columns - 1) + two(side) + two(side);
}

TEST(ImageHEIFTest, OnlyWhatIsSimplyBuiltIsDecoded) {
  const Item tile{"hvc1", kTile, "\1\2"};
  const auto turned = [](std::size_t times) { return "\1\2" + std::string(times, '\3'); };
  const auto slices = [](std::size_t count) {
    std::string units;
    for (; count > 0; --count) units += "\0\0\0\2\x26\1"s;
    return units;
  };
  const std::string larger = bigEndian(kLargerSize.size()) + kLargerSize;
  const std::tuple<const char*, std::vector<Item>, bool> kCases[] = {{"a picture", {tile}, true},
      {"turned 14 times", {{"hvc1", kTile, turned(14)}}, true},
      {"turned 15 times", {{"hvc1", kTile, turned(15)}}, false},
      {"stated to be smaller than it is coded", {{"hvc1", kTile, "\1\6"}}, false},
      {"grown by its own data", {{"hvc1", larger + kTile, "\1\2"}}, false},
      {"of as many slices as are decoded", {{"hvc1", slices(21'056), "\1\2"}}, true},
      {"of more slices", {{"hvc1", slices(21'057), "\1\2"}}, false},
      {"cut short", {{"hvc1", kTile.substr(0, 80), "\1\2"}}, false},
      {"of another coding", {{"av01", kTile, "\1\2"}}, false},
      {"a grid", {{"grid", grid(32), "\4", "dimg", "\2"}, tile}, true},
      {"a grid of two tiles", {{"grid", grid(32, 2), "\4", "dimg", "\2\3"}, tile, tile}, true},
      {"a grid of one tile twice", {{"grid", grid(32, 2), "\4", "dimg", "\2\2"}, tile}, false},
      {"a grid larger than stated", {{"grid", grid(33), "\4", "dimg", "\2"}, tile}, false},
      {"a grid of 10^8 pixels and more",
          {{"grid", "\0\0\0\0"s + two(10'001) + two(10'000), "\5", "dimg", "\2"}, tile}, false},
      {"a grid of itself", {{"grid", grid(32), "\4", "dimg", "\1"}}, false},
      {"a grid of grids",
          {{"grid", grid(32), "\4", "dimg", "\2"}, {"grid", grid(32), "\4", "dimg", "\3"}, tile}, false},
      {"an overlay", {{"iovl", grid(32), "\4", "dimg", "\2"}, tile}, false},
      {"a tone map of grids",
          {{"grid", grid(32), "\4", "dimg", "\2"}, tile, {"tmap", "", "", "dimg", "\1\2"}}, true},
      {"transparent", {tile, {"hvc1", kTile, "\1\2", "auxl", "\1"}}, true},
      {"transparent transparency",
          {{"hvc1", kTile, "\1\2", "auxl", "\2"}, {"hvc1", kTile, "\1\2", "auxl", "\1"}}, false}};
  for (const auto& [name, items, isSimple] : kCases) {
    SCOPED_TRACE(name);
    EXPECT_EQ(image::isSimplyBuilt(heif(items)), isSimple);
  }
  const std::string absurd(32, '\x7F');
  EXPECT_FALSE(image::isSimplyBuilt(heif({tile}, box("clap", absurd))));
#ifdef LUMOAPI_HAVE_HEIF
  for (const std::size_t simple : {0u, 1u, 9u}) {
    EXPECT_TRUE(jpegRepresentation(heif(std::get<1>(kCases[simple])), 0.5)) << simple;
  }
#endif
}

#ifdef LUMOAPI_HAVE_HEIF

/// The encoder behind the library does not give all back, which the leak sanitizer is told here.
extern "C" const char* __lsan_default_suppressions() { return "leak:libx265"; }

/// As a camera held upright writes it; empty where the library has no encoder.
std::string photo(const std::string& profile, const std::string& exif) {
  heif_context* const context = heif_context_alloc();
  heif_encoder* encoder = nullptr;
  std::string file;
  if (heif_context_get_encoder_for_format(context, heif_compression_HEVC, &encoder).code == heif_error_Ok) {
    heif_image* image = nullptr;
    heif_image_create(192, 128, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, &image);
    heif_image_add_plane(image, heif_channel_interleaved, 192, 128, 8);
    int stride = 0;
    std::uint8_t* pixels = heif_image_get_plane(image, heif_channel_interleaved, &stride);
    for (int place = 0; place < 128 * stride; ++place) {
      const bool isLeft = place % stride < stride / 2;
      pixels[place] = place % 4 == 3 && isLeft ? 0 : place % 4 == 0 || place % 4 == 3 ? 255 : 0;
    }
    heif_image_set_raw_color_profile(image, "prof", profile.data(), profile.size());
    heif_encoding_options* const options = heif_encoding_options_alloc();
    options->image_orientation = heif_orientation_rotate_90_cw;
    heif_image_handle* handle = nullptr;
    heif_context_encode_image(context, image, encoder, options, &handle);
    heif_context_add_exif_metadata(context, handle, exif.data(), static_cast<int>(exif.size()));
    heif_writer writer{1, [](heif_context*, const void* bytes, std::size_t count, void* to) {
                         static_cast<std::string*>(to)->assign(static_cast<const char*>(bytes), count);
                         return heif_error{heif_error_Ok, heif_suberror_Unspecified, ""};
                       }};
    heif_context_write(context, &writer, &file);
    heif_image_handle_release(handle);
    heif_encoding_options_free(options);
    heif_image_release(image);
    heif_encoder_release(encoder);
  }
  heif_context_free(context);
  return file;
}

TEST(ImageHEIFTest, ACamerasPictureIsTurnedAndKeepsItsProfile) {
  const std::string profile = profileFor("RGB ");
  std::string file = photo(profile, kExif);
  if (file.empty()) GTEST_SKIP() << "no encoder for HEIF here";
  const Data jpeg = jpegRepresentation(Data(std::string(file)), 0.9).value();
  const Decoded picture = decoded(jpeg);
  ASSERT_EQ(picture.size, (std::array<JDIMENSION, 2>{128, 192}));
  const auto colorAt = [&](std::size_t line) { return picture.pixels.at((line * 128 + 64) * 3 + 1); };
  EXPECT_GT(colorAt(40), 250) << "transparent, so white";
  EXPECT_LT(colorAt(150), 5) << "red";
  EXPECT_NE(jpeg.view().find("ICC_PROFILE\0\1\1"s + profile), std::string_view::npos);
  EXPECT_EQ(jpeg.view().find("Exif"), std::string_view::npos) << "turned already, and the place is gone";

  // Said to be smaller than it is, the picture is decoded by the library all the same.
  for (std::size_t place = 0; (place = file.find("ispe", place + 1)) != file.npos;) {
    file.replace(place + 8, 8, bigEndian(32) + bigEndian(32));
  }
  EXPECT_FALSE(jpegRepresentation(Data(std::move(file)), 0.9));
}

#endif

}  // namespace
}  // namespace lumo
