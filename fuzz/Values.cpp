#include "fuzz/Values.h"

#include <QDate>
#include <QStringList>

#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace TabulaFuzz {

int64_t Rng::range(int64_t lo, int64_t hi)
{
    const auto span = static_cast<uint64_t>(hi - lo) + 1;
    return lo + static_cast<int64_t>(span == 0 ? engine_() : engine_() % span);
}

namespace {

template <class T, size_t N>
const T& pick(Rng& rng, const std::array<T, N>& values)
{
    return values[static_cast<size_t>(rng.range(0, N - 1))];
}

}  // namespace

int64_t boundaryInt(Rng& rng)
{
    static const std::array<int64_t, 11> values{INT32_MIN, -32769, -32768, -2, -1, 0, 1, 32767, 32768, 65536, INT32_MAX};
    return pick(rng, values);
}

int64_t indexFor(Rng& rng, int64_t count)
{
    if (rng.percent(5))
        return boundaryInt(rng);
    if (rng.percent(8))
        return rng.range(-1, count + 1);
    return rng.range(count > 0 ? 1 : 0, std::max<int64_t>(count, 1));
}

int64_t countFrom(Rng& rng, std::initializer_list<int64_t> typical)
{
    if (rng.percent(4))
        return boundaryInt(rng);
    const auto index = static_cast<size_t>(rng.range(0, static_cast<int64_t>(typical.size()) - 1));
    return *(typical.begin() + index);
}

int64_t pixels(Rng& rng)
{
    if (rng.percent(6))
        return boundaryInt(rng);
    if (rng.percent(15))
        return rng.range(-3, 3);
    if (rng.percent(5))
        return rng.range(300, 1000);
    return rng.range(4, 150);
}

int64_t colour(Rng& rng)
{
    static const std::array<int64_t, 8> values{0, 0xFFFFFF, 0xC0C0C0, 0x80000005, 0x80000012, 0x800000FF, 0xFFFFFFFF, 0x7FFFFFFF};
    return rng.percent(20) ? rng.range(0, 0xFFFFFF) : pick(rng, values);
}

int64_t smallEnum(Rng& rng, int64_t last)
{
    return rng.percent(10) ? boundaryInt(rng) : rng.range(-1, last + 1);
}

QString text(Rng& rng)
{
    static const std::array<QString, 14> values{
        QString(), QStringLiteral("a"), QStringLiteral("Hello"), QStringLiteral("a\tb\tc"), QStringLiteral("   "),
        QStringLiteral("12/31/1999"), QStringLiteral("-1"), QStringLiteral("1e308"), QStringLiteral("line\nbreak\r"),
        QStringLiteral("\u00e4\u00f6\u00fc \u20ac \U0001F600"), QStringLiteral("0"), QStringLiteral("1"),
        QString(60, QLatin1Char('w')), QStringLiteral("x\ty\tz\tu\tv\tw\tq\tr\ts")};
    if (rng.percent(1))
        return QString(static_cast<qsizetype>(rng.range(1000, 100000)), QLatin1Char('y'));
    return pick(rng, values);
}

QString formatString(Rng& rng)
{
    static const std::array<QString, 8> values{
        QString(), QStringLiteral("<A|^B|>C"), QStringLiteral("|"), QStringLiteral(";|x"), QStringLiteral("a|b;c|d"),
        QStringLiteral("<|<|<|<|<|<|<|<|<|<|<|<"), QStringLiteral(";"), QStringLiteral("^Name|>Amount|<Date;r1|r2|r3")};
    if (rng.percent(2))
        return QStringLiteral("c|").repeated(static_cast<qsizetype>(rng.range(20, 300)));
    if (rng.percent(2))
        return QString(static_cast<qsizetype>(rng.percent(50) ? 5000 : 100000), QLatin1Char('H'));
    return pick(rng, values);
}

QString literal(const QString& text)
{
    if (text.size() > 80 && text.count(text.front()) == text.size())
        return QStringLiteral("QString(%1, QChar(%2))").arg(text.size()).arg(text.front().unicode());
    QString out = QStringLiteral("QString::fromUtf8(\"");
    for (char c : text.toUtf8()) {
        const auto u = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            out += QLatin1String("\\") + QLatin1Char(c);
        else if (u >= 32 && u < 127)
            out += QLatin1Char(c);
        else
            out += QStringLiteral("\\x%1\"\"").arg(u, 2, 16, QLatin1Char('0'));
    }
    return out + QStringLiteral("\")");
}

namespace {

struct VariantValue {
    QVariant value;
    const char* cpp;
};
#define VALUE(...) VariantValue{QVariant(__VA_ARGS__), "QVariant(" #__VA_ARGS__ ")"}

const std::vector<VariantValue>& variants()
{
    static const std::vector<VariantValue> values{
        VALUE(), VALUE(0), VALUE(-1), VALUE(255), VALUE(QStringLiteral("abc")), VALUE(1e300), VALUE(QStringLiteral("12")),
        VALUE(qlonglong(1) << 40), VALUE(QDate(2000, 1, 1)), VALUE(QStringList{QStringLiteral("a"), QStringLiteral("b")}),
        VALUE(true), VALUE(std::numeric_limits<double>::quiet_NaN()), VALUE(-32769), VALUE(65536), VALUE(INT32_MIN),
        VALUE(QString(100000, QLatin1Char('z'))), VALUE(-5), VALUE(3), VALUE(QVariantList{1, 2}),
    };
    return values;
}
#undef VALUE

// A font by name, size and whether every style is on; the first is none.
struct FontValue {
    const char* name;
    float size;
    bool styled;
};

const std::vector<FontValue>& fonts()
{
    static const std::vector<FontValue> values{
        {nullptr, 0, false}, {"", 8.25f, false},        {"Sans", 0, false},          {"Sans", -5, false},
        {"Sans", 1e6f, false}, {"NoSuchFont", 72, true}, {"Sans", 1, false},          {"Sans", 12, true},
        {"DejaVu Sans", 200, true}, {"", 200, true},
    };
    return values;
}

}  // namespace

int variantCount() { return static_cast<int>(variants().size()); }
QVariant variant(int64_t index) { return variants().at(static_cast<size_t>(index)).value; }
QString variantLiteral(int64_t index) { return QLatin1String(variants().at(static_cast<size_t>(index)).cpp); }

int fontCount() { return static_cast<int>(fonts().size()); }

TabulaControl::FontRef font(int64_t index)
{
    const FontValue& f = fonts().at(static_cast<size_t>(index));
    if (!f.name)
        return nullptr;
    auto result = std::make_shared<TabulaControl::StdFont>();
    result->Name = QLatin1String(f.name);
    result->Size = f.size;
    result->Bold = result->Italic = result->Underline = result->Strikethrough = f.styled;
    return result;
}

QString fontLiteral(int64_t index)
{
    const FontValue& f = fonts().at(static_cast<size_t>(index));
    if (!f.name)
        return QStringLiteral("nullptr");
    return QStringLiteral("font(\"%1\", %2%3)").arg(QLatin1String(f.name)).arg(double(f.size)).arg(f.styled ? ", true" : "");
}

int64_t coordinate(Rng& rng, int64_t extent)
{
    static const std::array<double, 6> odd{std::numeric_limits<double>::quiet_NaN(), INFINITY, -INFINITY, 1e30, -1e30, 3e9};
    double value = rng.percent(5) ? pick(rng, odd) : static_cast<double>(rng.range(-20, extent + 20));
    return std::bit_cast<int64_t>(value);
}

float coordinateValue(int64_t bits) { return static_cast<float>(std::bit_cast<double>(bits)); }

QString coordinateLiteral(int64_t bits)
{
    const double value = std::bit_cast<double>(bits);
    if (std::isnan(value))
        return QStringLiteral("NAN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("INFINITY") : QStringLiteral("-INFINITY");
    QString number = QString::number(value, 'g', 17);
    if (!number.contains(QLatin1Char('.')) && !number.contains(QLatin1Char('e')))
        number += QStringLiteral(".0");
    return number + QStringLiteral("f");
}

}  // namespace TabulaFuzz
