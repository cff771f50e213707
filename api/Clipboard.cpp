#include "state/TabSeparated.h"
#include "api/Facade.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>

namespace TabulaControl::detail {

namespace {

CellRows textsOf(const Grid& g, const QRect& block)
{
    CellRows rows;
    for (int32_t row = block.top(); row <= block.bottom(); ++row) {
        QStringList cells;
        for (int32_t col = block.left(); col <= block.right(); ++col)
            cells << g.TextMatrix(row, col);
        rows << cells;
    }
    return rows;
}

void putOnClipboard(const Grid& g, const QRect& block)
{
    const CellRows rows = textsOf(g, block);
    auto* data = new QMimeData;
    data->setText(toTabSeparated(rows));
    data->setHtml(toHtmlTable(rows));
    QGuiApplication::clipboard()->setMimeData(data);
}

int32_t pasteRows(Grid& g, const CellRows& rows)
{
    const int32_t top = std::max(g.selection.row(), 1);
    const int32_t left = std::max(g.selection.col(), 1);
    int32_t dropped = 0;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        for (qsizetype j = 0; j < rows[i].size(); ++j) {
            const int64_t row = top + i, col = left + j;
            if (row > g.model.rows().count() || col > g.model.cols().count())
                ++dropped;
            else
                g.storeAsTyped(static_cast<int32_t>(row), static_cast<int32_t>(col), rows[i][j]);
        }
    }
    return dropped;
}

bool isClipboardKey(QKeyEvent* e) { return e->matches(QKeySequence::Copy) || e->matches(QKeySequence::Paste); }

// Turns the standard copy and paste keys on the surface into copySelection()
// and paste(); their key release is swallowed as well.
class ClipboardShortcuts : public QObject {
public:
    static constexpr const char* Name = "clipboardShortcuts";

    ClipboardShortcuts(QObject* surface, Tabula& grid) : QObject(surface), grid_(grid)
    {
        setObjectName(QLatin1String(Name));
        surface->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::ShortcutOverride:
            if (!isClipboardKey(static_cast<QKeyEvent*>(event)))
                return false;
            event->accept();
            return true;
        case QEvent::KeyPress:
            return handlePress(static_cast<QKeyEvent*>(event));
        case QEvent::KeyRelease:
            return swallowRelease(static_cast<QKeyEvent*>(event));
        default:
            return false;
        }
    }

private:
    bool handlePress(QKeyEvent* e)
    {
        if (!isClipboardKey(e))
            return false;
        swallowedKey_ = e->key();
        try {
            if (e->matches(QKeySequence::Copy))
                grid_.copySelection();
            else
                grid_.paste();
        } catch (const ComponentError& error) {
            report(grid_, error);
        }
        return true;
    }

    bool swallowRelease(QKeyEvent* e)
    {
        if (swallowedKey_ == 0 || e->key() != swallowedKey_)
            return false;
        if (!e->isAutoRepeat())
            swallowedKey_ = 0;
        return true;
    }

    Tabula& grid_;
    int swallowedKey_ = 0;
};

// Run by a signal, such as a QAction's triggered, a clipboard slot has no
// caller to throw to: its failure is reported instead.
template <class F>
auto reportingFromSignal(const Tabula& grid, bool runBySignal, F&& body)
{
    try {
        return body();
    } catch (const ComponentError& error) {
        if (!runBySignal)
            throw;
        report(const_cast<Tabula&>(grid), error);
        return decltype(body()){};
    }
}

}  // namespace

}  // namespace TabulaControl::detail

namespace TabulaControl {

void Tabula::copySelection() const
{
    detail::reportingFromSignal(*this, sender(), [&] {
        call("copySelection", [&] { detail::putOnClipboard(*grid_, detail::selectedBlock(*this)); });
    });
}

int32_t Tabula::paste()
{
    return detail::reportingFromSignal(*this, sender(), [&] {
        const int32_t dropped = call("paste", [&] {
            if (grid_->editorState.isOpen())
                grid_->endEdit();
            const detail::CellRows rows = detail::fromTabSeparated(QGuiApplication::clipboard()->text());
            const int32_t count = [&] {
                const detail::UserEdit edit(*grid_);
                return detail::pasteRows(*grid_, rows);
            }();
            if (grid_->autoRedraw())
                grid_->Refresh();
            return count;
        });
        if (dropped > 0)
            emit pasteClipped(dropped);
        return dropped;
    });
}

void Tabula::cut()
{
    detail::reportingFromSignal(*this, sender(), [&] {
        call("cut", [&] {
            const QRect block = detail::selectedBlock(*this);
            detail::putOnClipboard(*grid_, block);
            grid_->clearCells(block);
        });
    });
}

bool Tabula::clipboardShortcuts() const
{
    const QWidget* surface = grid_->ui.picGrid.widget();
    return surface && surface->findChild<QObject*>(QLatin1String(detail::ClipboardShortcuts::Name),
                                                   Qt::FindDirectChildrenOnly);
}

void Tabula::setClipboardShortcuts(bool enabled)
{
    QWidget* surface = grid_->ui.picGrid.widget();
    if (!surface || enabled == clipboardShortcuts())
        return;
    if (enabled)
        new detail::ClipboardShortcuts(surface, *this);
    else
        delete surface->findChild<QObject*>(QLatin1String(detail::ClipboardShortcuts::Name),
                                            Qt::FindDirectChildrenOnly);
}

QRect Tabula::cellRect(int32_t Row, int32_t Col) const
{
    return call("cellRect", [&]() -> QRect {
        const detail::GridModel& model = grid_->model;
        if (grid_->viewport.isScrolledOff(Row, Col) || Row > model.rows().count() || Col > model.cols().count())
            return {};
        int32_t x = 0, y = 0;
        if (grid_->cellCoordinates(Row, Col, x, y))
            return {};
        const QPoint surface = grid_->ui.picGrid.widget()->mapTo(this, QPoint(0, 0));
        return QRect(x, y, model.cols().size(Col), model.rows().size(Row)).translated(surface);
    });
}

}  // namespace TabulaControl
