#include "tests/navigation/NavigationFixture.h"

#include <QPaintEvent>

#include <functional>

namespace {

// Collects the region Qt paints on the surface.
class PaintedRegion : public QObject {
public:
    QRegion region;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

class Screen : public TabulaTest::WideGrid {
protected:
    // Runs input with the grid settled, and returns what Qt painted after it.
    QRegion paintedAfter(const std::function<void()>& input)
    {
        settle(5);
        PaintedRegion painted;
        surface()->installEventFilter(&painted);
        input();
        settle(5);
        surface()->removeEventFilter(&painted);
        return painted.region;
    }
};

}  // namespace

// Input changes only the surface; what it changed must reach the screen
// without the input asking for it.
TEST_F(Screen, ShowsWhatInputChangedOnTheSurface)
{
    startAt(3, 3);
    const QRect from = cell(3, 3);
    EXPECT_TRUE(paintedAfter([&] { key(Qt::Key_Down); }).contains(from.united(cell(4, 3))));

    startAt(16, 1);
    EXPECT_TRUE(paintedAfter([&] { key(Qt::Key_Down); }).contains(cell(16, 1)));

    startAt(2, 2);
    EXPECT_TRUE(paintedAfter([&] { press(centre(2, 2)); dragTo(centre(4, 4)); }).contains(cell(3, 3)));
    release(centre(4, 4));

    startAt(2, 2);
    openEditorWith(Qt::Key_A);
    EXPECT_TRUE(paintedAfter([&] { QTest::keyClick(editor(), Qt::Key_Return); }).contains(cell(2, 2)));
}
