#include "bench/Payloads.h"

#include "LumoApi/Base64.h"
#include "LumoApi/LumoApiLog.h"
#include "LumoApi/LumoApiNimboObjects.h"
#include "LumoApi/LumoApiTextObject.h"

#include <jpeglib.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

namespace bench {

std::string sizeName(std::size_t size) {
  return size >= MiB ? std::to_string(size / MiB) + " MiB" : std::to_string(size / KiB) + " KiB";
}

std::string randomBytes(std::size_t size) {
  std::string bytes(size, '\0');
  std::minstd_rand random(1);
  for (char& byte : bytes) byte = static_cast<char>(random() >> 8);
  return bytes;
}

lumo::Data randomData(std::size_t size) { return lumo::Data(randomBytes(size)); }

std::string letters(std::size_t count) {
  std::string text(count, ' ');
  for (std::size_t i = 0; i < count; ++i) text[i] = "A flat walk from the old crane to the light"[i % 43];
  return text;
}

std::string ideographs(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t code = 0x4E00 + i * 97 % 0x5000;
    text += static_cast<char>(0xE0 | code >> 12);
    text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  }
  return text;
}

LumoApiDatastore::Values useStore() {
  LumoApiLog::silence();
  LumoApiDatastore::Values values{.scheme = "walks", .appName = "Harbour Walks", .openId = "o-31c7"};
  values.isLumoSupportUrlInsteadPastedboard = true;
  LumoApiDatastore::instance().setValues(values);
  return values;
}

std::optional<LumoApiMessage> textMessage(std::string text) {
  return LumoApiMessage::messageWithObject(LumoApiTextObject::objectWithText(std::move(text)), 7);
}

std::optional<LumoApiMessage> linkMessage(std::size_t previewSize) {
  auto link = LumoApiURLObject::objectWithURL(
      lumo::URL::parse(std::string_view("https://walks.example/harbour?from=app")),
      "Round the harbour in two hours", "A flat walk from the old crane to the lighthouse and back.",
      randomData(previewSize), 0);
  return LumoApiMessage::messageWithObject(std::move(link), 7);
}

std::optional<LumoApiMessage> videoMessage(std::size_t size) {
  auto video = LumoApiVideoForNimboObject::objectWithVideoData(randomData(size), "Two hours in one minute",
                                                               std::nullopt);
  return LumoApiMessage::messageWithObject(std::move(video), 7);
}

lumo::Value record(std::size_t pictureSize) {
  return lumo::Value::Dictionary{{"previewimagedata", randomData(pictureSize)}};
}

std::string incomingURL(std::size_t recordSize) {
  std::string url = "walks://request_from_lumo/view?src_type=app&version=1&file_type=news";
  const auto add = [&url](const char* key, std::string_view text) {
    url.append("&").append(key).append("=").append(lumo::base64Encoded(text));
  };
  add("url", "https://news.example/2024/05/harbour-bridge-opens");
  add("title", "The bridge opens");
  add("description", "Forty years after it was first drawn.");
  if (recordSize != 0) add("pasteboard", randomBytes(recordSize));
  return url + "&callback_type=scheme&callback_name=messenger";
}

lumo::Value smallDocument() {
  return lumo::Value::Dictionary{{"id", 1024},
                                 {"name", "Round the harbour"},
                                 {"url", "https://walks.example/harbour"},
                                 {"hours", 2.25},
                                 {"open", true},
                                 {"note", "from the \"old\" crane"},
                                 {"tags", lumo::Value::Array{"walk", "sea", "flat"}}};
}

lumo::Value largeDocument() { return lumo::Value::Array(670, smallDocument()); }

lumo::Data cameraPicture(unsigned width, unsigned height, int quality) {
  jpeg_error_mgr errors{};
  jpeg_compress_struct encoder{};
  encoder.err = jpeg_std_error(&errors);
  jpeg_create_compress(&encoder);
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&encoder, &bytes, &size);
  encoder.image_width = width;
  encoder.image_height = height;
  encoder.input_components = 3;
  encoder.in_color_space = JCS_RGB;
  jpeg_set_defaults(&encoder);
  jpeg_set_quality(&encoder, quality, TRUE);
  jpeg_start_compress(&encoder, TRUE);
  std::minstd_rand grain(1);
  std::vector<JSAMPLE> row(std::size_t{width} * 3);
  for (unsigned y = 0; y < height; ++y) {
    for (unsigned x = 0; x < width; ++x) {
      const auto light = (x / 9 + y / 7) % 160 + (grain() >> 16) % 24;
      for (unsigned plane = 0; plane < 3; ++plane) {
        row[std::size_t{x} * 3 + plane] = static_cast<JSAMPLE>(light + plane * ((x / 64 + y / 64) % 30));
      }
    }
    JSAMPROW start = row.data();
    jpeg_write_scanlines(&encoder, &start, 1);
  }
  jpeg_finish_compress(&encoder);
  lumo::Data picture = lumo::Data::copy(std::span(bytes, size));
  jpeg_destroy_compress(&encoder);
  std::free(bytes);
  return picture;
}

double profileQuality(const lumo::Data& picture) {
  return 5.0 * MiB / static_cast<double>(picture.size()) - 0.01;
}

}  // namespace bench
