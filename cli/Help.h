#pragma once

#include "cli/CommandLine.h"

#include <span>
#include <string>
#include <string_view>

namespace lumo::cli {

/// The help of a command: what it is for, examples, usage, what each option means.
std::string helpOf(const Command& command);
/// The help of the tool.
std::string helpOf(std::span<const Command> commands);

/// "lumoapi encode [--url] [FILE]"
std::string usageOf(const Command& command);
/// "-o, --output FILE"
std::string spelled(const Option& option);
/// What it means, and the words that are accepted.
std::string meaningOf(const Operand& operand);
/// The paragraphs of a text, which a blank line separates.
std::vector<std::string_view> paragraphsOf(std::string_view text);

extern const std::string_view kToolPurpose;
extern const std::string_view kToolExitStatus;
std::span<const Example> toolExamples();

}  // namespace lumo::cli
