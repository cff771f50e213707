#pragma once

#include "tests/support/GridFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>

#include <memory>

namespace TabulaTest {

inline constexpr uint32_t White = 0xFFFFFF;
inline constexpr uint32_t Black = 0x000000;
inline constexpr uint32_t Face = 0xC0C0C0;

// A shown grid driven through its real child widgets.
class NavigationFixture : public GridFixture {
protected:
    void SetUp() override
    {
        GridFixture::SetUp();
        vertical_ = grid().findChild<QScrollBar*>("scrVertical");
        horizontal_ = grid().findChild<QScrollBar*>("scrHorizontal");
        ASSERT_NE(surface(), nullptr);
        ASSERT_NE(vertical_, nullptr);
        ASSERT_NE(horizontal_, nullptr);
    }

    QScrollBar* vertical() { return vertical_; }
    QScrollBar* horizontal() { return horizontal_; }
    QLineEdit* editor() { return grid().findChild<QLineEdit*>("txtEdit"); }

    // The cell's rectangle on the surface, from cellRect; a header cell lines
    // up with the first shown data row or column.
    QRect cell(int32_t row, int32_t col)
    {
        const QRect data = grid().cellRect(row == 0 ? grid().TopRow() : row, col == 0 ? grid().LeftCol() : col);
        const QPoint at = surface()->mapFrom(&grid(), data.topLeft());
        return QRect(col == 0 ? 1 : at.x(), row == 0 ? 1 : at.y(), grid().ColWidth(col), grid().RowHeight(row));
    }
    QPoint centre(int32_t row, int32_t col) { return cell(row, col).center(); }
    // 'W' or 'B' for the centre pixel of each cell, '?' for any other colour.
    QString shades(std::initializer_list<std::pair<int32_t, int32_t>> cells)
    {
        QString result;
        for (auto [row, col] : cells) {
            const QPoint p = centre(row, col);
            const uint32_t c = pixel(p.x(), p.y());
            result += c == White ? 'W' : c == Black ? 'B' : '?';
        }
        return result;
    }
    // Pixels of the cell's top edge that differ from white: the focus mark.
    int markedTopEdge(int32_t row, int32_t col)
    {
        const QRect r = cell(row, col);
        int count = 0;
        for (int x = r.left() + 1; x < r.right(); ++x)
            count += pixel(x, r.top()) != White;
        return count;
    }
    int scrolls() { return static_cast<int>(log().only({"Scroll"}).size()); }

    void press(QPoint at, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(surface(), button, keys, at);
    }
    void release(QPoint at, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(surface(), button, keys, at);
    }
    void click(QPoint at, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        press(at, keys, button);
        release(at, keys, button);
    }
    void clickCell(int32_t row, int32_t col, Qt::KeyboardModifiers keys = {}) { click(centre(row, col), keys); }
    // Makes the cell current and forgets the events that took.
    void startAt(int32_t row, int32_t col)
    {
        clickCell(row, col);
        log().clear();
    }
    // A move with the buttons of the last press still held.
    void dragTo(QPoint at) { QTest::mouseMove(surface(), at); }
    void drag(QPoint from, QPoint to) { press(from); dragTo(to); release(to); }
    // A move with no button held, delivered even when the pointer is already there.
    void hover(QPoint at)
    {
        QMouseEvent move(QEvent::MouseMove, at, surface()->mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(surface(), &move);
    }
    void settle(int rounds)
    {
        for (int i = 0; i < rounds; ++i)
            QApplication::processEvents();
    }

    void key(Qt::Key k, Qt::KeyboardModifiers keys = {}) { QTest::keyClick(surface(), k, keys); }
    void openEditorWith(Qt::Key k)
    {
        key(k);
        QApplication::processEvents();
        ASSERT_TRUE(editor()->isVisible());
        log().clear();
    }
    // Gives column 1 a lookup list, types k into cell (1, 1) and returns the open list.
    QWidget* openDropDown(Qt::Key k, const QStringList& items)
    {
        for (const QString& item : items)
            grid().AddLookup(1, item);
        clickCell(1, 1);
        key(k);
        EXPECT_TRUE(child("ListForm")->isVisible());
        log().clear();
        return child("ListForm");
    }

    QString mouse(const char* name, int button, int shift, QPoint at)
    {
        return QString("%1(%2,%3,%4,%5)").arg(name).arg(button).arg(shift).arg(at.x()).arg(at.y());
    }
    QStringList clickEvents(QPoint at) { return {mouse("MouseDown", 1, 0, at), mouse("MouseUp", 1, 0, at), "Click"}; }

private:
    QScrollBar* vertical_ = nullptr;
    QScrollBar* horizontal_ = nullptr;
};

// Fifty rows and twenty columns: both scroll bars shown, the last shown row
// and column cut off.
class WideGrid : public NavigationFixture {
protected:
    void SetUp() override
    {
        NavigationFixture::SetUp();
        grid().setCols(20);
        grid().setRows(50);
        log().clear();
    }
};

}  // namespace TabulaTest
