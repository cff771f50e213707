#include "pixels/CellMemo.h"

#include <algorithm>
#include <iterator>

namespace TabulaControl::platform {

namespace {

bool fits32(const Box& b)
{
    constexpr int64_t low = INT32_MIN, high = INT32_MAX;
    return b.left >= low && b.top >= low && b.right <= high && b.bottom <= high;
}

template <class Rows>
auto firstRowFrom(Rows& rows, int64_t top)
{
    return std::lower_bound(rows.begin(), rows.end(), top, [](const auto& row, int64_t t) { return row.top < t; });
}

template <class Cells>
auto firstCellFrom(Cells& cells, int64_t left)
{
    return std::lower_bound(cells.begin(), cells.end(), left,
                            [](const auto& cell, int64_t l) { return cell.left < l; });
}

}  // namespace

const CellMemo::Cell* CellMemo::cellAt(const Box& bounds) const
{
    const auto row = firstRowFrom(rows_, bounds.top);
    if (row == rows_.end() || row->top != bounds.top)
        return nullptr;
    const auto cell = firstCellFrom(row->cells, bounds.left);
    if (cell == row->cells.end() || cell->left != bounds.left || cell->right != bounds.right ||
        cell->bottom != bounds.bottom)
        return nullptr;
    return &*cell;
}

std::optional<size_t> CellMemo::digestAt(const Box& bounds) const
{
    const Cell* cell = cellAt(bounds);
    return cell ? std::optional(cell->digest) : std::nullopt;
}

std::optional<size_t> CellMemo::movedDigestAt(const Box& bounds) const
{
    const Cell* cell = cellAt(bounds);
    return cell && cell->move == move_ ? std::optional(cell->digest) : std::nullopt;
}

std::vector<CellMemo::Row>::iterator CellMemo::rowAt(int64_t top)
{
    if (!rows_.empty() && rows_.back().top == top)
        return std::prev(rows_.end());
    const auto row = firstRowFrom(rows_, top);
    if (row != rows_.end() && row->top == top)
        return row;
    Row fresh{top, INT64_MIN, {}};
    // A row mostly holds as many cells as the one above it.
    if (row != rows_.begin())
        fresh.cells.reserve(std::prev(row)->cells.size());
    return rows_.insert(row, std::move(fresh));
}

void CellMemo::remember(const Box& bounds, size_t digest)
{
    forget(bounds);
    if (bounds.empty() || !fits32(bounds))
        return;
    tallest_ = std::max(tallest_, bounds.height());
    widest_ = std::max(widest_, bounds.width());
    Row& row = *rowAt(bounds.top);
    row.bottom = std::max(row.bottom, bounds.bottom);
    const Cell cell{int32_t(bounds.left), int32_t(bounds.right), int32_t(bounds.bottom), move_, digest};
    if (row.cells.empty() || row.cells.back().left < bounds.left)
        row.cells.push_back(cell);
    else
        row.cells.insert(firstCellFrom(row.cells, bounds.left), cell);
}

void CellMemo::forget(const Box& area)
{
    if (rows_.empty() || area.empty())
        return;
    const auto first = firstRowFrom(rows_, area.top - tallest_ + 1);
    const auto last = firstRowFrom(rows_, area.bottom);
    for (auto row = first; row != last; ++row) {
        if (row->bottom <= area.top)
            continue;
        auto& cells = row->cells;
        const auto from = firstCellFrom(cells, area.left - widest_ + 1);
        const auto to = std::find_if(from, cells.end(), [&](const Cell& c) { return c.left >= area.right; });
        cells.erase(std::remove_if(from, to, [&](const Cell& c) { return !intersect(boundsOf(*row, c), area).empty(); }),
                    to);
    }
    rows_.erase(std::remove_if(first, last, [](const Row& row) { return row.cells.empty(); }), last);
}

void CellMemo::moved(const Box& source, const Box& target, int64_t dx, int64_t dy)
{
    // Carried rows keep their order, and so do the rows left in place; the
    // two are merged by top edge. A cell carried onto one left in place
    // takes its place.
    enum class Fate { Carried, Kept, Lost };
    auto fate = [&](const Row& row, const Cell& cell) {
        const Box from = boundsOf(row, cell);
        if (contains(source, from) && contains(target, translated(from, dx, dy)) && fits32(translated(from, dx, dy)))
            return Fate::Carried;
        return intersect(from, target).empty() ? Fate::Kept : Fate::Lost;
    };
    std::vector<Row> carried, kept;
    for (Row& row : rows_) {
        Row moving{row.top + dy, INT64_MIN, {}}, staying{row.top, INT64_MIN, {}};
        const auto count = [&](Fate f) {
            return std::count_if(row.cells.begin(), row.cells.end(), [&](const Cell& c) { return fate(row, c) == f; });
        };
        moving.cells.reserve(size_t(count(Fate::Carried)));
        staying.cells.reserve(size_t(count(Fate::Kept)));
        for (Cell& cell : row.cells) {
            const Fate f = fate(row, cell);
            if (f == Fate::Carried) {
                moving.bottom = std::max(moving.bottom, cell.bottom + dy);
                moving.cells.push_back(
                    {int32_t(cell.left + dx), int32_t(cell.right + dx), int32_t(cell.bottom + dy), move_, cell.digest});
            } else if (f == Fate::Kept) {
                staying.bottom = std::max(staying.bottom, int64_t(cell.bottom));
                staying.cells.push_back(cell);
            }
        }
        if (!moving.cells.empty())
            carried.push_back(std::move(moving));
        if (!staying.cells.empty())
            kept.push_back(std::move(staying));
    }
    rows_.clear();
    rows_.reserve(carried.size() + kept.size());
    auto c = carried.begin(), k = kept.begin();
    while (c != carried.end() || k != kept.end()) {
        if (k == kept.end() || (c != carried.end() && c->top < k->top)) {
            rows_.push_back(std::move(*c++));
        } else if (c == carried.end() || k->top < c->top) {
            rows_.push_back(std::move(*k++));
        } else {
            Row merged{c->top, std::max(c->bottom, k->bottom), {}};
            merged.cells.reserve(c->cells.size() + k->cells.size());
            std::merge(c->cells.begin(), c->cells.end(), k->cells.begin(), k->cells.end(),
                       std::back_inserter(merged.cells),
                       [](const Cell& a, const Cell& b) { return a.left < b.left; });
            // Of two cells at one left edge, the carried one comes first and stays.
            merged.cells.erase(std::unique(merged.cells.begin(), merged.cells.end(),
                                           [](const Cell& a, const Cell& b) { return a.left == b.left; }),
                               merged.cells.end());
            rows_.push_back(std::move(merged));
            ++c;
            ++k;
        }
    }
}

void CellMemo::startMove()
{
    // Past 2^32 moves an old cell could pass for one just carried.
    if (++move_ == 0)
        clear();
}

void CellMemo::clear()
{
    rows_.clear();
    tallest_ = 0;
    widest_ = 0;
}

}  // namespace TabulaControl::platform
