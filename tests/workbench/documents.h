#pragma once

#include <string>
#include <vector>

namespace testing_support {

/// A command block of a document: the lines between ``` fences of a language.
struct CommandBlock {
    std::string document; ///< path in the checkout
    std::string language; ///< "sh", "mel"
    std::vector<std::string> lines;
};
/// The blocks of the documents that people read first, in order.
std::vector<CommandBlock> commandBlocks();

/// The rows of the tables of a document, cell by cell, back-quotes taken off cells that are one code word.
std::vector<std::vector<std::string>> tableRows(const std::string& document);

} // namespace testing_support
