#pragma once

#include <QList>
#include <QRect>
#include <QString>
#include <QStringList>

namespace TabulaControl {
class Tabula;
}

namespace TabulaControl::detail {

using CellRows = QList<QStringList>;

// Cells as tab-separated lines. A cell holding a tab, a line break or a
// double quote is put in double quotes, with its quotes doubled.
QString toTabSeparated(const CellRows& rows);
// Reads tab-separated lines back; a final line break ends the last row
// rather than starting an empty one.
CellRows fromTabSeparated(const QString& text);
QString toHtmlTable(const CellRows& rows);

// The selected block of data cells (x: columns, y: rows), or the current
// cell when no block is selected; empty when the grid has no data cell.
QRect selectedBlock(const Tabula& grid);

}  // namespace TabulaControl::detail
