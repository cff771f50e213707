#include "api/Facade.h"
#include "pixels/PaletteColours.h"

#include <QDataStream>
#include <QIODevice>

#include <vector>

namespace TabulaControl {

namespace {

constexpr quint32 LayoutMagic = 0x54424C59;
constexpr quint16 LayoutVersion = 1;

// What saveLayout keeps, indexed from the header line 0.
struct SavedLayout {
    std::vector<qint16> widths;
    std::vector<qint16> alignments;
    std::vector<qint16> heights;
};

std::vector<qint16> readSizes(QDataStream& in)
{
    qint32 count = -1;
    in >> count;
    std::vector<qint16> sizes;
    if (count < 0 || count > INT16_MAX + 1 || in.status() != QDataStream::Ok)
        return sizes;
    sizes.resize(static_cast<size_t>(count));
    for (qint16& size : sizes)
        in >> size;
    return sizes;
}

std::optional<SavedLayout> readLayout(const QByteArray& bytes)
{
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 magic = 0;
    quint16 version = 0;
    in >> magic >> version;
    if (magic != LayoutMagic || version != LayoutVersion)
        return std::nullopt;
    SavedLayout layout{readSizes(in), readSizes(in), readSizes(in)};
    const bool aligned = std::all_of(layout.alignments.begin(), layout.alignments.end(),
                                     [](qint16 a) { return a >= 0 && a <= 2; });
    if (in.status() != QDataStream::Ok || !in.atEnd() || !aligned || layout.widths.empty() ||
        layout.widths.size() != layout.alignments.size() || layout.heights.empty())
        return std::nullopt;
    return layout;
}

void writeSizes(QDataStream& out, int32_t last, const std::function<int16_t(int32_t)>& sizeOf)
{
    out << qint32{last + 1};
    for (int32_t i = 0; i <= last; ++i)
        out << qint16{sizeOf(i)};
}

}  // namespace

bool Tabula::followPalette() const { return grid_->surface.hasOwnSystemColours(); }

void Tabula::setFollowPalette(bool on)
{
    repaintingChange("followPalette", [&] {
        grid_->surface.setSystemColours(on ? std::optional(platform::systemColoursFrom(palette())) : std::nullopt);
        grid_->Refresh();
    });
}

void Tabula::applyPalette()
{
    notify("UserControl_PaletteChanged", [&] {
        grid_->surface.setSystemColours(platform::systemColoursFrom(palette()));
        grid_->Refresh();
    });
}

QByteArray Tabula::saveLayout() const
{
    return call("saveLayout", [&] {
        const detail::GridModel& model = grid_->model;
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out.setVersion(QDataStream::Qt_6_0);
        out << LayoutMagic << LayoutVersion;
        writeSizes(out, model.cols().count(), [&](int32_t c) { return model.cols().size(c); });
        writeSizes(out, model.cols().count(), [&](int32_t c) { return model.columns().alignment(c); });
        writeSizes(out, model.rows().count(), [&](int32_t r) { return model.rows().size(r); });
        return bytes;
    });
}

bool Tabula::restoreLayout(const QByteArray& layout)
{
    const std::optional<SavedLayout> saved = readLayout(layout);
    if (!saved)
        return false;
    detail::GridModel& model = grid_->model;
    const bool fits = saved->widths.size() == size_t(model.cols().count()) + 1 &&
                      saved->heights.size() == size_t(model.rows().count()) + 1;
    repaintingChange("restoreLayout", [&] {
        const auto cols = std::min<int64_t>(saved->widths.size() - 1, model.cols().count());
        for (int64_t c = 0; c <= cols; ++c) {
            model.setColumnWidth(c, saved->widths[c]);
            model.columns().setAlignment(c, saved->alignments[c]);
        }
        const auto rows = std::min<int64_t>(saved->heights.size() - 1, model.rows().count());
        for (int64_t r = 0; r <= rows; ++r)
            model.setRowHeight(r, saved->heights[r]);
        grid_->Refresh();
    });
    return fits;
}

}  // namespace TabulaControl
