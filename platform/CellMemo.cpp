#include "platform/CellMemo.h"

#include <algorithm>
#include <iterator>

namespace TabulaControl::platform {

namespace {

bool sameBox(const Box& a, const Box& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

bool contains(const Box& outer, const Box& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

}  // namespace

const CellMemo::Cell* CellMemo::cellAt(const Box& bounds) const
{
    const auto row = rows_.find(bounds.top);
    if (row == rows_.end())
        return nullptr;
    const auto cell = row->second.cells.find(bounds.left);
    if (cell == row->second.cells.end() || !sameBox(cell->second.bounds, bounds))
        return nullptr;
    return &cell->second;
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

void CellMemo::remember(const Box& bounds, size_t digest)
{
    if (bounds.empty())
        return;
    forget(bounds);
    tallest_ = std::max(tallest_, bounds.height());
    widest_ = std::max(widest_, bounds.width());
    // Cells come mostly in reading order: each lands at the end of its row.
    Row& row = rows_.try_emplace(std::prev(rows_.end(), rows_.empty() ? 0 : 1), bounds.top)->second;
    const Cell cell{bounds, digest, move_};
    row.add(cell);
    row.cells.insert_or_assign(row.cells.end(), bounds.left, cell);
}

void CellMemo::forget(const Box& area)
{
    if (rows_.empty() || area.empty())
        return;
    auto row = rows_.lower_bound(area.top - tallest_ + 1);
    const auto rowsEnd = rows_.lower_bound(area.bottom);
    while (row != rowsEnd) {
        if (row->second.bottom <= area.top) {
            ++row;
            continue;
        }
        auto& cells = row->second.cells;
        auto cell = cells.lower_bound(area.left - widest_ + 1);
        while (cell != cells.end() && cell->first < area.right) {
            if (intersect(cell->second.bounds, area).empty())
                ++cell;
            else
                cell = cells.erase(cell);
        }
        row = cells.empty() ? rows_.erase(row) : std::next(row);
    }
}

void CellMemo::moved(const Box& source, const Box& target, int64_t dx, int64_t dy)
{
    // Map nodes are carried over, not copied: a row keeps its node for the
    // cells that move with it.
    std::map<int64_t, Row> kept;
    while (!rows_.empty()) {
        auto row = rows_.extract(rows_.begin());
        const int64_t top = row.key();
        auto& cells = row.mapped().cells;
        Row carried;
        for (auto cell = cells.begin(); cell != cells.end();) {
            const Box to = translated(cell->second.bounds, dx, dy);
            if (contains(source, cell->second.bounds) && contains(target, to)) {
                cell->second.bounds = to;
                cell->second.move = move_;
                carried.add(cell->second);
                if (dx == 0) {
                    ++cell;
                    continue;
                }
                auto node = cells.extract(cell++);
                node.key() = to.left;
                carried.cells.insert(carried.cells.end(), std::move(node));
            } else if (intersect(cell->second.bounds, target).empty()) {
                Row& stays = kept[top];
                stays.add(cell->second);
                stays.cells.insert(cells.extract(cell++));
            } else {
                cell = cells.erase(cell);
            }
        }
        if (dx != 0)
            cells.swap(carried.cells);
        if (cells.empty())
            continue;
        row.mapped().bottom = carried.bottom;
        row.key() = top + dy;
        // Cells that stayed put may have taken the row's new place first;
        // they are fewer.
        if (const auto stayed = kept.find(row.key()); stayed != kept.end()) {
            row.mapped().bottom = std::max(row.mapped().bottom, stayed->second.bottom);
            cells.merge(stayed->second.cells);
            kept.erase(stayed);
        }
        kept.insert(std::move(row));
    }
    rows_ = std::move(kept);
}

void CellMemo::clear()
{
    rows_.clear();
    tallest_ = 0;
    widest_ = 0;
}

}  // namespace TabulaControl::platform
