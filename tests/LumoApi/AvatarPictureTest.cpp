// The profile picture that is too long to be sent as it is.

#include "platform/pictures/Image.h"
#include "support/Pictures.h"
#include "tests/LumoApi/ConverterTest.h"

#include <random>

namespace {

constexpr std::size_t kLimit = 5'242'880;

/// A PNG of noise, which no format makes small.
Data noise(std::size_t width, std::size_t height) {
  std::string rows((3 * width + 1) * height, '\0');
  std::minstd_rand random(7);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (i % (3 * width + 1) != 0) rows[i] = static_cast<char>(random() >> 8);
  }
  return lumo::pngOf(width, height, {8, 2}, rows);
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
