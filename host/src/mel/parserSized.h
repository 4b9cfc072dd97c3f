#pragma once

#include "mel/parser.h"

namespace host::mel {

/// Hands a new node on with its height; refuses trees too high to be walked safely.
template <class Node>
ExpressionRef Parser::sized(std::unique_ptr<Node> node, int heightBelow)
{
    constexpr int kHighest = 1500;
    node->height = heightBelow + 1;
    if (node->height > kHighest)
        scanner.fail("An expression is nested too deeply.");
    return node;
}

} // namespace host::mel
