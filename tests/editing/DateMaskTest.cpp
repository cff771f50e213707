#include "editing/DateMask.h"

#include <gtest/gtest.h>

using TabulaControl::detail::DateMask;

namespace {

QString typeAll(const QString& keys)
{
    QString text;
    for (QChar key : keys) {
        int16_t ascii = static_cast<int16_t>(key.unicode());
        text = DateMask().Mask(ascii, text);
        EXPECT_EQ(ascii, 0) << "every key is consumed";
    }
    return text;
}

struct Typing {
    const char* keys;
    const char* text;
};

class DateMaskTyping : public ::testing::TestWithParam<Typing> {};

}  // namespace

TEST_P(DateMaskTyping, BuildsTheDateAsItIsTyped)
{
    EXPECT_EQ(typeAll(QString::fromLatin1(GetParam().keys)), GetParam().text) << GetParam().keys;
}

INSTANTIATE_TEST_SUITE_P(Keys, DateMaskTyping,
                         ::testing::Values(Typing{"03072024", "03/07/2024"}, Typing{"372024", "03/07/2024"},
                                           Typing{"1/5/24/", "01/05/2024"}, Typing{"12/31/99/", "12/31/1999"},
                                           Typing{"13", "1"}, Typing{"0230", "02/03/0"}, Typing{"0229", "02/29/"},
                                           Typing{"0431", "04/3"}, Typing{"1a2", "12/"}, Typing{"12/31/20245", "12/31/2024"},
                                           Typing{"12/3\b", "12/"}, Typing{"12/\b", "12"}, Typing{"00", "0"}));
