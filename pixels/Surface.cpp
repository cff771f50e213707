#include "pixels/Surface.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace TabulaControl::platform {

namespace {

qreal validRatio(qreal ratio) { return ratio >= 0.25 && ratio <= 16 ? ratio : 1; }

// A surface without pixels has no extent either way; the grid's layout
// reads a height of 0 when the width is 0.
std::pair<int, int> validExtent(int width, int height)
{
    return width <= 0 || height <= 0 ? std::pair(0, 0) : std::pair(width, height);
}

Box unite(const Box& a, const Box& b)
{
    if (a.empty())
        return b;
    if (b.empty())
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

// Bounding box of the part of whole that lies outside cut.
Box boundsOfDifference(const Box& whole, const Box& cut)
{
    const Box inner = intersect(whole, cut);
    if (inner.empty())
        return whole;
    Box result;
    for (const Box& part : partsAround(whole, inner))
        result = unite(result, part);
    return result;
}

}  // namespace

Surface::Surface(int width, int height, qreal devicePixelRatio)
    : font_(QFont(), &Raster::referenceDevice()),
      pixels_(validExtent(width, height).first, validExtent(width, height).second, validRatio(devicePixelRatio),
              translateColor(backColor_))
{
    font_.setStyleStrategy(QFont::NoAntialias);
}

const QImage& Surface::image() const { return pixels_.image(); }

QImage Surface::picture() const
{
    QImage picture = image();
    picture.setDevicePixelRatio(devicePixelRatio());
    return picture;
}

QRegion Surface::takeChangedRegion() { return pixels_.takeChangedRegion(); }

void Surface::setDevicePixelRatio(qreal ratio)
{
    pixels_.onResize(width(), height(), validRatio(ratio), translate(backColor_));
}

void Surface::resize(int width, int height)
{
    const auto [w, h] = validExtent(width, height);
    pixels_.onResize(w, h, devicePixelRatio(), translate(backColor_));
}

void Surface::setSystemColours(const std::optional<SystemColours>& colours)
{
    pixels_.makeOwedRender();
    raster().setSystemColours(colours.value_or(kSystemColours));
    ownSystemColours_ = colours.has_value();
}

void Surface::clear() { pixels_.onClear(translate(backColor_)); }

void Surface::fill(Rect r, OleColor colour)
{
    const Box box = toBox(r);
    const QRgb pixel = translate(colour);
    if (pixels_.onWrite({Write::Call::Fill, box, pixel, ::qHash(colour)}))
        raster().fill(box, pixel);
}

void Surface::fillRemembered(Rect r, OleColor colour)
{
    const Box box = intersect(toBox(r), raster().bounds());
    if (pixels_.drawingCell() || box.empty())
        return fill(r, colour);
    pixels_.fillRemembered(box, translate(colour));
}

void Surface::line(int32_t x1, int32_t y1, int32_t x2, int32_t y2)
{
    // The owed render sets the pen too, so the pen is read once it is made.
    pixels_.makeOwedRender();
    const QRgb pixel = translate(penColor_);
    const bool dotted = penStyle_ == PenStyle::Dot;
    Write write{.box = {std::min(x1, x2), std::min(y1, y2), int64_t{std::max(x1, x2)} + 1, int64_t{std::max(y1, y2)} + 1}};
    if (!dotted && (x1 == x2 || y1 == y2)) {
        // Drawn as a fill of the pixels it visits.
        const auto [left, right] = axisSpan(x1, x2);
        const auto [top, bottom] = axisSpan(y1, y2);
        write.box = x1 == x2 && y1 == y2 ? Box{} : Box{left, top, right, bottom};
        write.opaque = pixel;
    }
    if (pixels_.onWrite(write))
        raster().line(x1, y1, x2, y2, pixel, dotted);
}

void Surface::edge(Rect r, unsigned kinds, unsigned sides)
{
    if (pixels_.onWrite({Write::Call::Edge, toBox(r), std::nullopt, qHashMulti(0, kinds, sides)}))
        raster().edge(toBox(r), kinds, sides);
}

void Surface::checkBox(Rect r, bool checked)
{
    if (pixels_.onWrite({Write::Call::CheckBox, toBox(r), std::nullopt, ::qHash(checked)}))
        raster().checkBox(toBox(r), checked);
}

void Surface::setFontName(const QString& name) { changeFont([&] { font_.setFamily(name); }); }

void Surface::setFontSize(double points)
{
    if (points > 0 && std::isfinite(points))
        changeFont([&] { font_.setPointSizeF(points); });
}

void Surface::setFontBold(bool on) { changeFont([&] { font_.setBold(on); }); }
void Surface::setFontItalic(bool on) { changeFont([&] { font_.setItalic(on); }); }
void Surface::setFontUnderline(bool on) { changeFont([&] { font_.setUnderline(on); }); }
void Surface::setFontStrikethrough(bool on) { changeFont([&] { font_.setStrikeOut(on); }); }

void Surface::text(QAnyStringView s, Rect r, unsigned flags)
{
    Write write{.call = Write::Call::Text, .box = toBox(r)};
    if (pixels_.drawingCell()) {
        const TextStyle style = textStyle();
        write.digest = raster().textDigest(s, write.box, flags, style);
        // A cell is remembered only when drawing it again gives its pixels.
        if (raster().drawsOutlines(style))
            write.call = Write::Call::Other;
    }
    // The style is read again once the write is allowed: the owed render sets it too.
    if (pixels_.onWrite(write))
        raster().text(textOf(s), write.box, flags, textStyle());
}

// The text as a QString without allocating where it can: UTF-16 is viewed
// in place, Latin-1 is widened into a buffer the next text reuses.
QString Surface::textOf(QAnyStringView s)
{
    return s.visit([this](auto view) {
        using View = decltype(view);
        if constexpr (std::is_same_v<View, QStringView>) {
            return QString::fromRawData(view.data(), view.size());
        } else if constexpr (std::is_same_v<View, QLatin1StringView>) {
            if (!latin1Text_.isDetached())
                latin1Text_ = QString();
            latin1Text_.resize(view.size());
            std::transform(view.data(), view.data() + view.size(), latin1Text_.begin(),
                           [](char c) { return QChar(QLatin1Char(c)); });
            return latin1Text_;
        } else {
            return view.toString();
        }
    });
}

void Surface::focusRect(Rect r)
{
    if (pixels_.onWrite({.box = toBox(r)}))
        raster().focusRect(toBox(r));
}

void Surface::invert(Rect r)
{
    if (pixels_.onWrite({.box = toBox(r)}))
        raster().invert(toBox(r));
}

Rect Surface::scroll(int32_t dx, int32_t dy, Rect scroll, Rect clip)
{
    const Box surface = raster().bounds();
    const Box source = toBox(scroll);
    const Box target = intersect(toBox(clip), surface);
    const Box moved = intersect(intersect(translated(source, dx, dy), target), translated(surface, dx, dy));
    if (!pixels_.onMove(source, moved, dx, dy))
        return {};
    raster().move(moved, dx, dy);
    const Box uncovered = boundsOfDifference(intersect(source, target), moved);
    return uncovered.empty() ? Rect{} : toRect(uncovered);
}

}  // namespace TabulaControl::platform
