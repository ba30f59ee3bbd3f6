#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lumo::cli {

/// A QR code with the margin that readers need around it.
class QRCode {
 public:
  /// The bytes that the largest code holds.
  static constexpr std::size_t kMostBytes = 2953;

  /// The code of a text of 1 to kMostBytes bytes.
  explicit QRCode(std::string_view text);

  /// How many modules each side has.
  std::size_t side() const noexcept { return side_; }
  /// What lies outside is light.
  bool isDark(std::size_t row, std::size_t column) const noexcept {
    return row < side_ && column < side_ && isDark_[row * side_ + column];
  }

 private:
  std::size_t side_;
  std::vector<bool> isDark_;
};

/// Lines of half blocks, two modules above each other in a character. With colours dark on light; without,
/// the characters stand for the light modules, which is right on a dark terminal.
std::string textOf(const QRCode& code, bool isColoured);
std::string pngOf(const QRCode& code);
std::string svgOf(const QRCode& code);

}  // namespace lumo::cli
