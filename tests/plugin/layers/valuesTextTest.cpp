// Values lists that are put together from what was formatted before.
#include "helperFunctions/valuesText.h"

#include <charconv>
#include <gtest/gtest.h>
#include <random>

namespace {

/// Each number as std::to_chars writes it; the numbers below need no exponent.
std::string expected(const std::vector<double>& values)
{
    std::string text;
    char number[64];
    for (const double value : values) {
        if (!text.empty())
            text += ',';
        text.append(number,
                    std::to_chars(number, number + sizeof number, value, std::chars_format::fixed).ptr);
    }
    return text;
}

TEST(ValuesText, IsTheSameTextWhateverChanged)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> weight(0.0, 1.0);
    for (std::size_t count : {0u, 1u, 2u, 7u, 1000u}) {
        std::vector<double> known(count);
        for (double& value : known)
            value = random() % 2 ? weight(random) : random() % 3 / 2.0;
        const ValuesText texts(known);
        for (unsigned changed : {0u, 1u, 5u, 10u}) {
            std::vector<double> values(known);
            for (double& value : values)
                value = random() % 10 < changed ? weight(random) : value;
            std::string text = "before ";
            texts.append(values, text);
            EXPECT_EQ(text, "before " + expected(values))
                << count << " values, " << changed << " in ten changed";
            EXPECT_EQ(valuesText(values), expected(values));
        }
    }
}

TEST(ValuesText, TellsZerosApart)
{
    const ValuesText texts({0.0, 1.0, -0.0});
    std::string text;
    texts.append({-0.0, 1.0, 0.0}, text);
    EXPECT_EQ(text, "-0,1,0");
}

} // namespace
