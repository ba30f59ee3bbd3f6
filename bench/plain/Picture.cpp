#include "bench/plain/Plain.h"

#include <jpeglib.h>

#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace plain {

namespace {

struct Errors {
  jpeg_error_mgr manager{};
  std::jmp_buf escape{};

  jpeg_error_mgr* install() {
    jpeg_std_error(&manager);
    manager.error_exit = [](j_common_ptr common) {
      std::longjmp(reinterpret_cast<Errors*>(common->err)->escape, 1);
    };
    return &manager;
  }
};

struct Pixels {
  unsigned width = 0;
  unsigned height = 0;
  std::vector<JSAMPLE> samples;

  JSAMPROW row(unsigned y) { return samples.data() + std::size_t{y} * width * 3; }
};

bool decode(const lumo::Data& picture, Pixels& pixels) {
  Errors errors;
  jpeg_decompress_struct decoder{};
  decoder.err = errors.install();
  if (setjmp(errors.escape) != 0) {
    jpeg_destroy_decompress(&decoder);
    return false;
  }
  jpeg_create_decompress(&decoder);
  jpeg_mem_src(&decoder, picture.data(), picture.size());
  jpeg_read_header(&decoder, TRUE);
  decoder.out_color_space = JCS_RGB;
  jpeg_start_decompress(&decoder);
  pixels.width = decoder.output_width;
  pixels.height = decoder.output_height;
  pixels.samples.resize(std::size_t{pixels.width} * pixels.height * 3);
  while (decoder.output_scanline < decoder.output_height) {
    JSAMPROW row = pixels.row(decoder.output_scanline);
    jpeg_read_scanlines(&decoder, &row, 1);
  }
  jpeg_finish_decompress(&decoder);
  jpeg_destroy_decompress(&decoder);
  return true;
}

std::string encode(Pixels& pixels, int quality) {
  jpeg_error_mgr errors{};
  jpeg_compress_struct encoder{};
  encoder.err = jpeg_std_error(&errors);
  jpeg_create_compress(&encoder);
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&encoder, &bytes, &size);
  encoder.image_width = pixels.width;
  encoder.image_height = pixels.height;
  encoder.input_components = 3;
  encoder.in_color_space = JCS_RGB;
  jpeg_set_defaults(&encoder);
  jpeg_set_quality(&encoder, quality, TRUE);
  jpeg_start_compress(&encoder, TRUE);
  while (encoder.next_scanline < encoder.image_height) {
    JSAMPROW row = pixels.row(encoder.next_scanline);
    jpeg_write_scanlines(&encoder, &row, 1);
  }
  jpeg_finish_compress(&encoder);
  std::string picture(reinterpret_cast<const char*>(bytes), size);
  jpeg_destroy_compress(&encoder);
  std::free(bytes);
  return picture;
}

}  // namespace

std::optional<std::string> reencoded(const lumo::Data& picture, double quality) {
  Pixels pixels;
  if (!decode(picture, pixels)) return std::nullopt;
  return encode(pixels, static_cast<int>(std::lround(quality * 100)));
}

}  // namespace plain
