#pragma once

#include "tests/support/GridFixture.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPoint>
#include <QRect>
#include <QScrollBar>
#include <QTest>

namespace TabulaTest {

inline constexpr uint32_t White = 0xFFFFFF;
inline constexpr uint32_t Black = 0x000000;
inline constexpr uint32_t Face = 0xC0C0C0;

// A shown grid driven through its real child widgets. Cell rectangles are
// computed from the public sizes with grid lines of one pixel.
class NavigationFixture : public GridFixture {
protected:
    void SetUp() override
    {
        GridFixture::SetUp();
        surface_ = grid().findChild<QWidget*>("picGrid");
        vertical_ = grid().findChild<QScrollBar*>("scrVertical");
        horizontal_ = grid().findChild<QScrollBar*>("scrHorizontal");
        ASSERT_NE(surface_, nullptr);
        ASSERT_NE(vertical_, nullptr);
        ASSERT_NE(horizontal_, nullptr);
    }

    QWidget* surface() { return surface_; }
    QScrollBar* vertical() { return vertical_; }
    QScrollBar* horizontal() { return horizontal_; }
    QWidget* child(const char* name) { return grid().findChild<QWidget*>(name); }

    QRect cell(int32_t row, int32_t col)
    {
        int x = grid().RowHeader() ? grid().ColWidth(0) + 2 : 1;
        for (int32_t c = grid().LeftCol(); c < col; ++c)
            x += grid().ColWidth(c) + 1;
        int y = grid().ColHeader() ? grid().RowHeight(0) + 2 : 1;
        for (int32_t r = grid().TopRow(); r < row; ++r)
            y += grid().RowHeight(r) + 1;
        if (row == 0)
            y = 1;
        if (col == 0)
            x = 1;
        return QRect(x, y, grid().ColWidth(col), grid().RowHeight(row));
    }
    QPoint centre(int32_t row, int32_t col) { return cell(row, col).center(); }
    uint32_t centrePixel(int32_t row, int32_t col)
    {
        const QPoint p = centre(row, col);
        return pixel(p.x(), p.y());
    }
    // Pixels of the cell's top edge that differ from fill: the focus mark.
    int markedTopEdge(int32_t row, int32_t col, uint32_t fill = White)
    {
        const QRect r = cell(row, col);
        int count = 0;
        for (int x = r.left() + 1; x < r.right(); ++x)
            count += pixel(x, r.top()) != fill;
        return count;
    }

    void press(QPoint at, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(surface_, button, keys, at);
    }
    void release(QPoint at, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(surface_, button, keys, at);
    }
    void click(QPoint at, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        press(at, keys, button);
        release(at, keys, button);
    }
    void clickCell(int32_t row, int32_t col, Qt::KeyboardModifiers keys = {}) { click(centre(row, col), keys); }
    // A move with the buttons of the last press still held.
    void dragTo(QPoint at) { QTest::mouseMove(surface_, at); }
    // A move with no button held, delivered even when the pointer is
    // already there.
    void hover(QPoint at)
    {
        QMouseEvent move(QEvent::MouseMove, at, surface_->mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(surface_, &move);
    }

    void key(Qt::Key k, Qt::KeyboardModifiers keys = {}) { QTest::keyClick(surface_, k, keys); }

    QString mouse(const char* name, int button, int shift, QPoint at)
    {
        return QString("%1(%2,%3,%4,%5)").arg(name).arg(button).arg(shift).arg(at.x()).arg(at.y());
    }

private:
    QWidget* surface_ = nullptr;
    QScrollBar* vertical_ = nullptr;
    QScrollBar* horizontal_ = nullptr;
};

}  // namespace TabulaTest
