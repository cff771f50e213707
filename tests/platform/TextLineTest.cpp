#include "pixels/Raster.h"
#include "pixels/TextLine.h"

#include <QPainter>

#include <gtest/gtest.h>

using namespace TabulaControl::platform;

namespace {

struct FontCase {
    const char* name;
    double points;
    bool bold, italic, underline, strikeOut;
};

const FontCase kFonts[] = {
    {"default", 8.25, false, false, false, false}, {"small", 6, false, false, false, false},
    {"nine", 9.75, false, false, false, false},    {"bold", 12, true, false, false, false},
    {"italic", 14.25, false, true, false, false},  {"bolditalic", 10, true, true, false, false},
    {"large", 24, false, false, false, false},     {"underline", 8.25, false, false, true, false},
    {"strikeout", 11, false, false, false, true},
};

// Named rows: which the glyph path must draw itself, and which it may hand
// back to the general layout.
const std::pair<const char*, QString> kTexts[] = {
    {"ascii", "Alpha 12.50 Bravo"},
    {"kerning pairs", "AVAWAY To Ty Te LT P. F, Yo Wa"},
    {"ligatures", "office fluffy ffi ffl fj"},
    {"digits", "0123456789 -7 +3,141.59"},
    {"punctuation", "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~"},
    {"accented", QString::fromUtf8("Ærøskøbing Ñandú çà ÿ ß µ ÷×")},
    {"latin1 symbols", QString::fromUtf8("¡¢£¤¥¦§¨©ª«¬®¯°±²³´¶·¸¹º»¼½¾¿")},
    {"soft hyphen", QString::fromUtf8("Silben\u00ADtrennung")},
    {"nbsp", QString::fromUtf8("100\u00A0km\u00A0")},
    {"trailing spaces", "ends in spaces   "},
    {"leading spaces", "   starts in spaces"},
    {"tab and breaks", "one\ttwo\nthree\rfour"},
    {"right to left", QString::fromUtf8("שלום עולם abc")},
    {"arabic", QString::fromUtf8("مرحبا")},
    {"combining", QString::fromUtf8("e\u0301a\u0308o\u0302")},
    {"surrogates", QString::fromUtf8("\U0001F600 \U0001D49C")},
    {"missing glyph", QString::fromUtf8("\uE000\uFFFF\u0378")},
    {"cjk", QString::fromUtf8("漢字かな")},
    {"single", "x"},
    {"long", QString(300, QLatin1Char('w'))},
};

const std::pair<const char*, unsigned> kPlacements[] = {
    {"left top", TextLeft | TextTop},        {"centre", TextCenter | TextVCenter},
    {"right bottom", TextRight | TextBottom}, {"centre bottom", TextCenter | TextBottom},
};

QFont fontOf(const FontCase& f)
{
    QFont font(QFont(), &Raster::referenceDevice());
    font.setStyleStrategy(QFont::NoAntialias);
    font.setPointSizeF(f.points);
    font.setBold(f.bold);
    font.setItalic(f.italic);
    font.setUnderline(f.underline);
    font.setStrikeOut(f.strikeOut);
    return font;
}

QImage blank()
{
    QImage image(260, 60, QImage::Format_ARGB32_Premultiplied);
    image.fill(qRgb(255, 255, 240));
    return image;
}

const QRect kClip(2, 1, 250, 56);

// Rectangles at whole and fractional places, narrower and wider than texts.
const QRectF kRects[] = {QRectF(3, 4, 200, 40), QRectF(10.5, 2.25, 31, 13), QRectF(-20, 30, 90, 9.5)};

}  // namespace

TEST(TextLine, GlyphPathDrawsTheGeneralPathsPixelsOrDeclines)
{
    int drawn = 0;
    for (const FontCase& f : kFonts) {
        const QFont font = fontOf(f);
        for (const auto& [textName, text] : kTexts) {
            for (const auto& [placementName, flags] : kPlacements) {
                for (const QRectF& rect : kRects) {
                    QImage general = blank(), glyphs = blank();
                    {
                        QPainter painter(&general);
                        painter.setClipRect(kClip);
                        drawTextLine(painter, text, rect, flags, font, qRgb(20, 40, 200));
                    }
                    if (!drawGlyphLine(glyphs, kClip, text, rect, flags, font, font.key(), qRgb(20, 40, 200)))
                        continue;
                    ++drawn;
                    EXPECT_EQ(glyphs, general) << f.name << " / " << textName << " / " << placementName << " at "
                                               << rect.x() << "," << rect.y();
                }
            }
        }
    }
    // Most plain texts take the glyph path in most fonts.
    EXPECT_GT(drawn, 400);
}
