// Label texts against the C library's fixed notation, cut.
#include "kernels/labelText.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace {

std::string label(double value, int precision)
{
    char text[kLabelCapacity];
    const std::size_t length = writeLabel(value, precision, text);
    EXPECT_EQ(std::strlen(text), length);
    return text;
}

std::string expectedLabel(double value, int precision)
{
    char text[400];
    std::snprintf(text, sizeof text, "%f", value);
    const std::string whole = text;
    const std::size_t point = whole.find('.');
    return point == std::string::npos ? whole
                                      : whole.substr(0, point + 1 + static_cast<std::size_t>(precision));
}

void compare(double value)
{
    for (int precision : {0, 1, 2, 5, 6, 9})
        ASSERT_EQ(label(value, precision), expectedLabel(value, precision)) << std::hexfloat << value;
}

} // namespace

TEST(LabelText, IsCutAndNotRounded)
{
    EXPECT_EQ(label(0.123456, 2), "0.12");
    EXPECT_EQ(label(0.999999, 2), "0.99");
    EXPECT_EQ(label(0.9999999, 2), "1.00") << "the text has six decimals before it is cut";
    EXPECT_EQ(label(0.7, 0), "0.");
    EXPECT_EQ(label(-0.25, 1), "-0.2");
}

TEST(LabelText, RoundsTiesOfTheSeventhDecimalToEvenAsTheCLibraryDoes)
{
    // Multiples of 1/128 and 1/1024 are exact, and many of them end in a five after the sixth decimal.
    for (int k = -5000; k <= 5000; ++k) {
        compare(k / 128.0);
        compare(k / 1024.0);
        compare(std::nextafter(k / 128.0, 1e9));
        compare(std::nextafter(k / 128.0, -1e9));
    }
}

TEST(LabelText, AgreesWithTheCLibraryOnValuesOfEverySize)
{
    std::mt19937_64 random(20191);
    std::uniform_real_distribution<double> weight(-0.1, 1.1);
    std::uniform_real_distribution<double> exponent(-320.0, 308.0);
    for (int k = 0; k < 20000; ++k) {
        compare(weight(random));
        compare(static_cast<double>(static_cast<float>(weight(random))));
        compare(std::pow(10.0, exponent(random)) * weight(random));
    }
    for (double value : {0.0, -0.0, 1.0, 9007199254740991.0, 9007199254740992.0, 9007199254740994.0, 1e22,
                         std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min(),
                         0.9999995, 0.99999949999999, 4503599627370495.5, 123456.7890125})
        compare(value);
}

TEST(LabelText, ValuesThatAreNoNumbersAreNotCut)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(label(infinity, 2), "inf");
    EXPECT_EQ(label(-infinity, 0), "-inf");
    EXPECT_EQ(label(std::numeric_limits<double>::quiet_NaN(), 2), "nan");
}

TEST(LabelText, HasAPointWhateverTheLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "C.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) == nullptr)
            continue;
        EXPECT_EQ(label(0.5, 2), "0.50") << name;
        EXPECT_EQ(label(1e17, 1), "100000000000000000.0") << name;
    }
    std::setlocale(LC_ALL, before.c_str());
}
