// The profile picture that is too long to be sent as it is.

#include "platform/Image.h"
#include "tests/LumoApi/ConverterTest.h"

#include <png.h>

#include <random>

namespace {

constexpr std::size_t kLimit = 5'242'880;

/// A PNG of noise, which no format makes small.
Data noise(std::uint32_t width, std::uint32_t height) {
  std::vector<std::uint8_t> pixels(std::size_t{width} * height * 3);
  std::minstd_rand random(7);
  for (std::uint8_t& pixel : pixels) pixel = static_cast<std::uint8_t>(random() >> 8);
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = width;
  image.height = height;
  image.format = PNG_FORMAT_RGB;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  std::vector<std::uint8_t> file(size);
  EXPECT_TRUE(png_image_write_to_memory(&image, file.data(), &size, 0, pixels.data(), 0, nullptr));
  file.resize(size);
  return Data(std::move(file));
}

class AvatarPicture : public ConverterTest {
 protected:
  std::shared_ptr<LumoApiImageForLumoAvatarObject> picture(Data data) {
    auto object = std::make_shared<LumoApiImageForLumoAvatarObject>();
    object->setData(std::move(data));
    return object;
  }
};

TEST_F(AvatarPicture, ReencodedOnceAtTheQualityOfTheRatio) {
  const Data png = noise(1400, 1300);
  ASSERT_GT(png.size(), kLimit);
  const auto object = picture(png);
  EXPECT_EQ(targetOf(send(object)), "mlumoapi://profile/sdk_avatar_edit");
  const double quality = 5'242'880.0 / static_cast<double>(png.size()) - 0.01;
  EXPECT_EQ(object->data(), lumo::jpegRepresentation(png, quality));
  EXPECT_LE(object->data()->size(), kLimit);
  EXPECT_EQ(record(), (LumoApiLargeData{{"file_data", *object->data()}}));
  EXPECT_EQ(log.back(), "pasteboarditem count: 1");
}

TEST_F(AvatarPicture, StillTooLongIsRefusedWithTheObjectChanged) {
  const Data png = noise(3500, 3500);
  Data jpeg;
  for (double quality = 0.5; jpeg.size() <= kLimit; quality += 0.05)
    jpeg = *lumo::jpegRepresentation(png, quality);
  const auto object = picture(jpeg);
  EXPECT_FALSE(send(object));
  EXPECT_EQ(log.back(), "param error: image data is too big");
  EXPECT_GT(object->data()->size(), kLimit);
  EXPECT_NE(object->data(), jpeg) << "the object holds what the refused attempt made";
  EXPECT_TRUE(storeUntouched());
}

TEST_F(AvatarPicture, BytesThatAreNoPictureGoOnWithoutThem) {
  const auto object = picture(bytes(kLimit + 1));
  object->setPreviewImageData(bytes(3));
  EXPECT_TRUE(send(object));
  EXPECT_FALSE(object->data());
  EXPECT_EQ(record(), (LumoApiLargeData{{"previewimagedata", bytes(3)}}));
  store().setApiLargeData(before);
  const auto bare = picture(bytes(15'728'640));
  EXPECT_TRUE(send(bare));
  EXPECT_EQ(log.back(), "pasteboarditem count: 0");
  EXPECT_TRUE(storeUntouched());
}

TEST_F(AvatarPicture, ShortOnesAndFarTooLongOnesAreNotDecoded) {
  const auto exact = picture(bytes(kLimit));
  EXPECT_TRUE(send(exact));
  EXPECT_EQ(record().find("file_data")->asData()->data(), exact->data()->data());
  const auto huge = picture(bytes(15'728'641));
  EXPECT_FALSE(send(huge));
  EXPECT_EQ(huge->data()->size(), 15'728'641u);
}

}  // namespace
