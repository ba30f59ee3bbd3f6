#include "cli/QR.h"

#include "cli/Console.h"
#include "cli/Conversions.h"
#include "cli/Files.h"
#include "cli/QRCode.h"
#include "documents/Words.h"
#include "inspect/GivenURL.h"
#include "inspect/Text.h"
#include "inspect/URL.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>

namespace lumo::cli {

namespace {

int refuse(const std::string& reason) {
  complain("refused: " + reason);
  return kRefused;
}

bool leavesBytesBehind(const URL& url) {
  const std::vector<inspection::Warning> warnings = inspection::findingsOf(url, {}, false).warnings.all();
  return std::any_of(warnings.begin(), warnings.end(), [](const inspection::Warning& warning) {
    return warning.code == inspection::codes::kRecordInStore;
  });
}

/// How many columns the terminal has; 0 where the output is none.
std::size_t terminalColumns() {
  winsize size{};
  return ::isatty(STDOUT_FILENO) == 1 && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

int show(const QRCode& code, const std::optional<std::string>& colour) {
  const std::size_t columns = terminalColumns();
  if (columns != 0 && columns < code.side()) {
    return refuse("the code is " + std::to_string(code.side()) + " columns wide, the terminal " +
                  std::to_string(columns) + "; --png and --svg write it to a file");
  }
  writeFile("-", textOf(code, isColoured(colour)));
  return kDone;
}

inspection::GivenURL readURL(const std::string& operand) {
  if (isURL(operand)) return inspection::urlItself(documents::trimmed(operand));
  Input input(operand);
  return inspection::urlGivenBy(input.readAll(), input.name(), input.files());
}

int convert(const Choices& choices) {
  const inspection::GivenURL given = readURL(choices.operand());
  if (!given.url) {
    complain(given.why.reason);
    return exitStatusOf(given.why.status);
  }
  const std::string_view text = given.url->absoluteString();
  if (text.size() > QRCode::kMostBytes) {
    return refuse("url: " + std::to_string(text.size()) + " bytes, at most " +
                  std::to_string(QRCode::kMostBytes) + " in a QR code");
  }
  if (leavesBytesBehind(*given.url)) complain("the bytes beside the URL are not in the code");
  const QRCode code(text);
  if (choices.png) writeFile(*choices.png, pngOf(code));
  if (choices.svg) writeFile(*choices.svg, svgOf(code));
  return choices.png || choices.svg ? kDone : show(code, choices.colour);
}

}  // namespace

int qr(const Choices& choices) {
  return withFiles([&] { return convert(choices); });
}

}  // namespace lumo::cli
