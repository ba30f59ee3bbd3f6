#include "platform/pictures/Codec.h"

#ifdef LUMOAPI_HAVE_HEIF
#include <libheif/heif.h>
#endif

#include <exception>

namespace lumo::image {

#ifdef LUMOAPI_HAVE_HEIF

namespace {

template <auto function>
struct Release {
  template <class T>
  void operator()(T* object) const noexcept {
    function(object);
  }
};

using Context = std::unique_ptr<heif_context, Release<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Release<heif_image_handle_release>>;
using Image = std::unique_ptr<heif_image, Release<heif_image_release>>;
using Options = std::unique_ptr<heif_decoding_options, Release<heif_decoding_options_free>>;

bool isFine(const heif_error& error) {
  if (error.code == heif_error_Memory_allocation_error &&
      error.subcode != heif_suberror_Security_limit_exceeded) {
    throw std::bad_alloc();
  }
  return error.code == heif_error_Ok;
}

bool isWithin(int width, int height) {
  return width > 0 && height > 0 &&
         image::isWithin(static_cast<unsigned>(width), static_cast<unsigned>(height), kMaxHeldPixels);
}

Handle primaryPictureOf(heif_context* context, const Data& picture) {
  constexpr int kMaxCodedSide = 16'384;
  heif_context_set_maximum_image_size_limit(context, kMaxCodedSide);
  heif_context_set_max_decoding_threads(context, 0);  // in the caller's thread
  heif_image_handle* handle = nullptr;
  if (!isFine(heif_context_read_from_memory_without_copy(context, picture.data(), picture.size(), nullptr)) ||
      !isFine(heif_context_get_primary_image_handle(context, &handle))) {
    return nullptr;
  }
  return Handle(handle);
}

/// The pixels, turned and cropped as the file says, with 8 bits a channel.
Image decode(const heif_image_handle* handle) {
  const Options options(heif_decoding_options_alloc());
  if (!options) throw std::bad_alloc();
  options->convert_hdr_to_8bit = 1;
  options->strict_decoding = 1;
  const bool withAlpha = heif_image_handle_has_alpha_channel(handle) != 0;
  heif_image* image = nullptr;
  if (!isFine(heif_decode_image(handle, &image, heif_colorspace_RGB,
                                withAlpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB,
                                options.get()))) {
    return nullptr;
  }
  return Image(image);
}

Data colorProfileOf(const heif_image_handle* handle) {
  const std::size_t size = heif_image_handle_get_raw_color_profile_size(handle);
  if (size == 0) return {};
  DataBuffer profile = Data::uninitialized(size);
  if (!isFine(heif_image_handle_get_raw_color_profile(handle, profile.bytes))) return {};
  return profile.data;
}

std::optional<Data> reencode(const Data& picture, int quality) {
  if (!isSimplyBuilt(picture)) return std::nullopt;
  const Context context(heif_context_alloc());
  if (!context) throw std::bad_alloc();
  const Handle handle = primaryPictureOf(context.get(), picture);
  if (!handle) return std::nullopt;
  const int codedWidth = heif_image_handle_get_width(handle.get());
  const int codedHeight = heif_image_handle_get_height(handle.get());
  if (!isWithin(codedWidth, codedHeight)) return std::nullopt;
  requireMemory(static_cast<std::uint64_t>(codedWidth) * static_cast<std::uint64_t>(codedHeight) * 12);
  const Image image = decode(handle.get());
  if (!image) return std::nullopt;

  const int width = heif_image_get_primary_width(image.get());
  const int height = heif_image_get_primary_height(image.get());
  int stride = 0;
  std::uint8_t* pixels = heif_image_get_plane(image.get(), heif_channel_interleaved, &stride);
  if (!pixels || !isWithin(width, height)) return std::nullopt;
  const int channels = heif_image_get_chroma_format(image.get()) == heif_chroma_interleaved_RGBA ? 4 : 3;
  const Traits traits{1, fittingProfile(colorProfileOf(handle.get()), 3)};
  return encode({pixels, static_cast<std::size_t>(stride), static_cast<std::uint32_t>(width),
                 static_cast<std::uint32_t>(height), channels},
                quality, traits);
}

}  // namespace

std::optional<Data> reencodeHEIF(const Data& picture, int quality) {
  try {
    return reencode(picture, quality);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {  // what the library's containers make of absurd sizes
    return std::nullopt;
  }
}

#else

std::optional<Data> reencodeHEIF(const Data&, int) { return std::nullopt; }

#endif

}  // namespace lumo::image
