#include "state/TabSeparated.h"

#include <TabulaControl/Tabula.h>

#include <algorithm>

namespace TabulaControl::detail {

namespace {

QString quotedIfNeeded(const QString& cell)
{
    const bool plain = std::none_of(cell.begin(), cell.end(), [](QChar c) {
        return c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QLatin1Char('"');
    });
    if (plain)
        return cell;
    QString doubled = cell;
    doubled.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + doubled + QLatin1Char('"');
}

// Reads tab-separated text one character at a time.
class Reader {
public:
    explicit Reader(const QString& text) : text_(text) {}

    CellRows rows()
    {
        while (pos_ < text_.size())
            readCell();
        if (!cell_.isEmpty() || !row_.isEmpty() || quoted_)
            endRow();
        return rows_;
    }

private:
    void readCell()
    {
        const QChar c = text_.at(pos_++);
        if (c == QLatin1Char('"') && cell_.isEmpty() && !quoted_)
            return readQuoted();
        if (c == QLatin1Char('\t'))
            return endCell();
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            if (c == QLatin1Char('\r') && pos_ < text_.size() && text_.at(pos_) == QLatin1Char('\n'))
                ++pos_;
            return endRow();
        }
        cell_ += c;
    }
    void readQuoted()
    {
        quoted_ = true;
        while (pos_ < text_.size()) {
            const QChar c = text_.at(pos_++);
            if (c != QLatin1Char('"')) {
                cell_ += c;
                continue;
            }
            if (pos_ >= text_.size() || text_.at(pos_) != QLatin1Char('"'))
                return;
            cell_ += c;
            ++pos_;
        }
    }
    void endCell()
    {
        row_ << cell_;
        cell_.clear();
        quoted_ = false;
    }
    void endRow()
    {
        endCell();
        rows_ << row_;
        row_.clear();
    }

    const QString& text_;
    qsizetype pos_ = 0;
    QString cell_;
    bool quoted_ = false;
    QStringList row_;
    CellRows rows_;
};

}  // namespace

QString toTabSeparated(const CellRows& rows)
{
    QString text;
    for (const QStringList& row : rows) {
        QStringList cells;
        for (const QString& cell : row)
            cells << quotedIfNeeded(cell);
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

CellRows fromTabSeparated(const QString& text) { return Reader(text).rows(); }

QString toHtmlTable(const CellRows& rows)
{
    QString html = QStringLiteral("<table>");
    for (const QStringList& row : rows) {
        html += QLatin1String("<tr>");
        for (const QString& cell : row)
            html += QLatin1String("<td>") + cell.toHtmlEscaped() + QLatin1String("</td>");
        html += QLatin1String("</tr>");
    }
    return html + QLatin1String("</table>");
}

QRect selectedBlock(const Tabula& grid)
{
    if (grid.Rows() < 1 || grid.Cols() < 1)
        return {};
    const bool block = grid.BlockSelected();
    const int32_t top = block ? std::min(grid.Row1(), grid.Row2()) : grid.Row();
    const int32_t bottom = block ? std::max(grid.Row1(), grid.Row2()) : grid.Row();
    const int32_t left = block ? std::min(grid.Col1(), grid.Col2()) : grid.Col();
    const int32_t right = block ? std::max(grid.Col1(), grid.Col2()) : grid.Col();
    const QRect cells = QRect(QPoint(left, top), QPoint(right, bottom));
    return cells.intersected(QRect(1, 1, grid.Cols(), grid.Rows()));
}

}  // namespace TabulaControl::detail
