// Whole pictures of the grid after scenarios driven through the public
// interface and real input, compared bit for bit with the images under
// tests/data/golden. TABULA_UPDATE_GOLDEN=1 rewrites the images; a mismatch
// writes the actual picture to golden-actual/ in the build directory.

#include "tests/navigation/NavigationFixture.h"

#include <QDir>

#include <functional>

namespace {

using namespace TabulaControl;
using TabulaTest::caseName;

class Golden;
using T = Golden&;
using G = Tabula&;

struct GoldenCase {
    const char* name;
    int rows = 0, cols = 0;  // when rows > 0, the scene starts from fill(rows, cols)
    std::function<void(T, G)> play = {};
};

// The pixels are taken from Picture(); the child widgets' state must not
// change when the picture is read.
class Golden : public TabulaTest::NavigationFixture, public ::testing::WithParamInterface<GoldenCase> {
public:
    // rows x cols data cells under a header row "Col1|Col2|...", every cell
    // holding "r<row>c<col>"; AutoRedraw is left on.
    void fill(int32_t rows, int32_t cols)
    {
        grid().setAutoRedraw(false);
        grid().setCols(cols);
        grid().setRows(0);
        for (int32_t r = 1; r <= rows; ++r) {
            QStringList fields;
            for (int32_t c = 1; c <= cols; ++c)
                fields.append(QString("r%1c%2").arg(r).arg(c));
            grid().AddItem(fields.join('\t'));
        }
        for (int32_t c = 1; c <= cols; ++c)
            grid().setTextMatrix(0, c, QString("Col%1").arg(c));
        grid().setAutoRedraw(true);
    }
    void play(const GoldenCase& scene)
    {
        if (scene.rows > 0)
            fill(scene.rows, scene.cols);
        if (scene.play)
            scene.play(*this, grid());
    }
    // One scroll-bar step per entry of by, forward when it is positive.
    void steps(QScrollBar* bar, std::initializer_list<int> by)
    {
        for (int each : by)
            bar->triggerAction(each > 0 ? QAbstractSlider::SliderSingleStepAdd : QAbstractSlider::SliderSingleStepSub);
    }
    void barsAt(int top, int left)
    {
        vertical()->setValue(top);
        horizontal()->setValue(left);
    }
    void rowSteps(std::initializer_list<int> by) { steps(vertical(), by); }
    void colSteps(std::initializer_list<int> by) { steps(horizontal(), by); }
    void keys(std::initializer_list<Qt::Key> list, Qt::KeyboardModifiers mods = {})
    {
        for (Qt::Key k : list)
            key(k, mods);
    }
    // Cells as {row, col}.
    void dragCells(QPoint from, QPoint to) { drag(centre(from.x(), from.y()), centre(to.x(), to.y())); }
    // What a host can observe of the child widgets: the bars and the editor.
    QString childState()
    {
        QString out;
        for (QScrollBar* bar : {vertical(), horizontal()})
            out += QString("%1 %2..%3 v%4 p%5; ").arg(bar->isVisible()).arg(bar->minimum()).arg(bar->maximum())
                       .arg(bar->value()).arg(bar->pageStep());
        const QRect r = editor()->geometry();
        return out + QString("edit %1 %2,%3 %4x%5").arg(editor()->isVisible()).arg(r.x()).arg(r.y()).arg(r.width())
                         .arg(r.height());
    }
    using NavigationFixture::clickCell;
    using NavigationFixture::horizontal;
    using NavigationFixture::vertical;
};

QString goldenPath(const char* name) { return QString(TABULA_GOLDEN_DIR "/%1.png").arg(name); }

TEST_P(Golden, PictureMatchesTheStoredImage)
{
    play(GetParam());
    const QString before = childState();
    const QImage actual = grid().Picture().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(childState(), before) << "reading the picture changed what the host sees";
    const QString path = goldenPath(GetParam().name);
    if (qEnvironmentVariableIntValue("TABULA_UPDATE_GOLDEN") == 1) {
        QDir().mkpath(TABULA_GOLDEN_DIR);
        ASSERT_TRUE(actual.save(path)) << path.toStdString();
        return;
    }
    const QImage expected(path);
    ASSERT_FALSE(expected.isNull()) << "no image " << path.toStdString() << "; run with TABULA_UPDATE_GOLDEN=1";
    if (actual == expected.convertToFormat(QImage::Format_RGB32))
        return;
    QDir().mkpath(TABULA_GOLDEN_ACTUAL_DIR);
    const QString actualPath = QString(TABULA_GOLDEN_ACTUAL_DIR "/%1.png").arg(GetParam().name);
    actual.save(actualPath);
    ADD_FAILURE() << "the picture differs; actual picture written to " << actualPath.toStdString();
}

FontRef font(const char* name, float size, bool bold, bool italic, bool underline = false, bool strike = false)
{
    return std::make_shared<StdFont>(StdFont{name, size, bold, italic, underline, strike});
}

const auto down = Qt::Key_Down, right = Qt::Key_Right;
const auto shift = Qt::ShiftModifier;

const GoldenCase cases[] = {
    {"defaults"},
    {"filled", 8, 4},
    {"format_string_alignments", 0, 0,
     [](T, G g) {
         g.setFormatString("<Name|^Qty|>Price|Long"), g.AddItem("Apples\t3\t1.20\tA text far too long for its column");
         g.AddItem("Pears\t12\t0.95\tA&B");
     }},
    {"alternate_rows", 6, 3, [](T, G g) { g.setBackColorAlt(0xE0FFE0), g.setUseBackColorAlt(true); }},
    {"colours", 5, 3,
     [](T, G g) {
         g.setBackColor(0xFFF0E0), g.setForeColor(0x800000), g.setBackColorFixed(0x00FFFF);
         g.setForeColorFixed(0x0000FF), g.setGridLineColor(0x008000), g.setBackColorBkg(0x404080);
     }},
    {"item_colours", 0, 0,
     [](T, G g) { g.setCols(3), g.AddItem("red on\tyellow", 0x00FFFF, 0x0000FF), g.AddItem("plain\trow"); }},
    {"fixed_flat", 4, 3, [](T, G g) { g.setBackColorFixed(0xFFE0C0), g.setFixedStyle(Flat); }},
    {"fixed_flat_without_grid", 4, 3, [](T, G g) { g.setFixedStyle(Flat), g.setShowGrid(false); }},
    {"grid_dotted", 6, 4, [](T, G g) { g.setGridLineColor(0), g.setGridSolid(false); }},
    {"grid_dotted_flat", 6, 4, [](T, G g) { g.setGridSolid(false), g.setFixedStyle(Flat); }},
    {"without_grid", 6, 4, [](T, G g) { g.setShowGrid(false); }},
    {"without_headers", 6, 4, [](T, G g) { g.setColHeader(false), g.setRowHeader(false); }},
    {"without_header_row", 3, 3, [](T, G g) { g.setColHeader(false); }},
    {"without_header_column", 3, 3, [](T, G g) { g.setRowHeader(false); }},
    {"border_none", 3, 3, [](T, G g) { g.setBackColorBkg(0xFF0000), g.setBorderStyle(NoBorder); }},
    {"fonts", 5, 3,
     [](T, G g) {
         g.setRowHeight(0, 22), g.setFont(font("DejaVu Serif", 10, false, true, true));
         g.setFontFixed(font("DejaVu Sans", 11, true, false, false, true));
     }},
    {"sizes", 6, 4,
     [](T, G g) {
         g.setColWidth(0, 12), g.setColWidth(2, 20), g.setColWidth(3, 110), g.setRowHeight(2, 30), g.setRowHeight(3, 4);
     }},
    {"coloured_text_at_any_ratio", 0, 0,
     [](T t, G g) {
         g.setForeColor(0x0000FF), g.setForeColorFixed(0xFF0000), g.setFormatString("<Left|^Centre|>Right|Box");
         g.setColMask(4, checkmark);
         g.AddItem("Apples\t3\t1.20\t1"), g.AddItem("Pears\t12\t0.95\t0"), g.AddItem("Plums\t7\t2.10\t1");
         for (int r = 4; r <= 30; ++r)
             g.AddItem(QString("Row %1\t%1\t%1.00\t%2").arg(r).arg(r % 2));
         g.setRowHeight(1, 20), g.setRowHeight(3, 30), g.setGridSolid(false);
         t.rowSteps({1});  // 21 pixels: no whole number of device pixels at ratio 1.5
     }},
    {"check_boxes", 0, 0,
     [](T, G g) {
         g.setFormatString("Done|^Tick|Text"), g.setColMask(1, checkmark), g.setColMask(2, checkmark);
         g.AddItem("1\t0\tone"), g.AddItem("0\t1\ttwo"), g.AddItem("\tTrue\tthree"), g.setRowHeight(3, 30);
     }},
    {"no_rows", 3, 3, [](T, G g) { g.setRows(0); }},
    {"marks_after_keys", 8, 4, [](T t, G) { t.keys({down, right, right, down}); }},
    {"block_by_shift_keys", 8, 4, [](T t, G) { t.clickCell(2, 2), t.keys({down, down, right}, shift); }},
    {"block_by_mouse_drag", 8, 4, [](T t, G) { t.dragCells({4, 3}, {2, 1}); }},
    {"block_then_click_elsewhere", 8, 4, [](T t, G) { t.dragCells({1, 1}, {3, 3}), t.clickCell(6, 2); }},
    {"block_without_grid", 8, 4, [](T t, G g) { g.setShowGrid(false), t.clickCell(2, 2), t.keys({right, down}, shift); }},
    {"selection_by_row", 8, 4, [](T t, G g) { g.setSelectionMode(SelectionByRow), t.clickCell(3, 2), t.keys({down}); }},
    {"selection_by_column", 8, 4, [](T t, G g) { g.setSelectionMode(SelectionByCol), t.clickCell(2, 3); }},
    {"header_clicks_select_lines", 8, 4, [](T t, G) { t.clickCell(0, 2), t.clickCell(4, 0); }},
    {"selection_not_allowed", 8, 4, [](T t, G g) { g.setAllowSelection(false), t.clickCell(2, 2), t.keys({down}, shift); }},
    {"editor_open", 6, 3, [](T t, G) { t.clickCell(2, 2), t.keys({Qt::Key_X, Qt::Key_Y}); }},
    {"editor_committed", 6, 3, [](T t, G) { t.clickCell(2, 2), t.keys({Qt::Key_X, Qt::Key_Return}); }},
    {"scrolled_by_bars", 40, 12, [](T t, G) { t.barsAt(10, 4); }},
    {"page_down_and_end", 40, 12, [](T t, G) { t.keys({Qt::Key_PageDown, Qt::Key_End}); }},
    {"one_step_down_and_right", 40, 12,
     [](T t, G) { t.clickCell(3, 2), t.keys({down}, shift), t.rowSteps({1}), t.colSteps({1}); }},
    {"one_step_up_and_left", 40, 12,
     [](T t, G) { t.barsAt(6, 3), t.clickCell(8, 4), t.rowSteps({-1}), t.colSteps({-1}); }},
    {"one_steps_by_row_without_grid", 40, 12,
     [](T t, G g) { g.setShowGrid(false), g.setSelectionMode(SelectionByRow), t.clickCell(2, 2), t.rowSteps({1, 1, -1}); }},
    {"one_steps_by_column_without_headers", 40, 12,
     [](T t, G g) {
         g.setColHeader(false), g.setRowHeader(false), g.setSelectionMode(SelectionByCol);
         t.clickCell(2, 2), t.colSteps({1, 1, -1});
     }},
    {"one_step_with_editor_open", 40, 12, [](T t, G) { t.clickCell(2, 2), t.keys({Qt::Key_Q}), t.colSteps({1}); }},
    {"block_partly_scrolled_off", 40, 12, [](T t, G) { t.dragCells({2, 2}, {6, 3}), t.vertical()->setValue(4); }},
    {"auto_redraw_off_keeps_the_old_picture", 6, 3,
     [](T t, G g) {
         g.setAutoRedraw(false), g.setTextMatrix(1, 1, "changed"), g.AddItem("added\trow"), g.setTopRow(2), t.clickCell(3, 2);
     }},
    {"auto_redraw_off_then_refresh", 6, 3,
     [](T, G g) { g.setAutoRedraw(false), g.setTextMatrix(1, 1, "changed"), g.AddItem("added\trow"), g.Refresh(); }},
    {"top_row_stored_then_key", 30, 4, [](T t, G g) { g.setTopRow(5), t.keys({down}); }},
    {"font_object_changed_after_repaint", 4, 3,
     [](T, G g) { FontRef f = font("DejaVu Sans", 9, false, false); g.setFont(f), f->Bold = true, g.setForeColor(255); }},
    {"back_colour_changed_by_another_grid", 4, 3, [](T, G) { Tabula().setBackColor(0x00FFFF); }},
    {"host_repaints_from_a_key_event", 6, 3,
     [](T t, G g) {
         QObject::connect(g.events(), &TabulaEvents::KeyDown, [&g] { g.setTextMatrix(1, 1, "key"); });
         t.keys({down, down});
     }},
};

INSTANTIATE_TEST_SUITE_P(Golden, Golden, ::testing::ValuesIn(cases), caseName);

int deviceEdge(int v, qreal ratio) { return static_cast<int>(std::floor(v * ratio + 0.5)); }

// Each device pixel of a picture at `ratio` from the surface pixel it lies
// in: surface pixel x covers device pixels deviceEdge(x) up to deviceEdge(x + 1).
QImage blockScaled(const QImage& image, qreal ratio)
{
    QImage scaled(deviceEdge(image.width(), ratio), deviceEdge(image.height(), ratio), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            for (int dy = deviceEdge(y, ratio); dy < deviceEdge(y + 1, ratio); ++dy)
                for (int dx = deviceEdge(x, ratio); dx < deviceEdge(x + 1, ratio); ++dx)
                    scaled.setPixel(dx, dy, image.pixel(x, y));
    return scaled;
}

// The grid draws at its screen's device pixel ratio (ctest runs this at
// QT_SCALE_FACTOR 1.5 and 2 too). Against the stored ratio-1 picture scaled
// up block by block, only text pixels (red and blue in this scene) may
// differ, and some must: lines, edges and check boxes cover whole device
// pixels with no blended colour, and text is laid out at device resolution.
class DeviceRatio : public Golden {};

TEST_F(DeviceRatio, LinesCoverWholeDevicePixelsAndTextIsDrawnAtDeviceResolution)
{
    const auto scene = std::find_if(std::begin(cases), std::end(cases), [](const GoldenCase& c) {
        return QByteArray(c.name) == "coloured_text_at_any_ratio";
    });
    play(*scene);
    const qreal ratio = grid().devicePixelRatioF();
    const QImage picture = grid().Picture().convertToFormat(QImage::Format_RGB32);
    const QImage reference = QImage(goldenPath(scene->name)).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(reference.isNull());
    EXPECT_EQ(grid().Picture().devicePixelRatio(), ratio);
    const QImage expected = blockScaled(reference, ratio);
    ASSERT_EQ(picture.size(), expected.size());
    const auto isText = [](QRgb p) { return (p & 0xFFFFFF) == 0xFF0000 || (p & 0xFFFFFF) == 0x0000FF; };
    int textDifferences = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb actual = picture.pixel(x, y), scaled = expected.pixel(x, y);
            if (actual == scaled)
                continue;
            ASSERT_TRUE(isText(actual) || isText(scaled)) << "at device pixel " << x << "," << y;
            ++textDifferences;
        }
    if (ratio == 1)
        EXPECT_EQ(textDifferences, 0);
    else
        EXPECT_GT(textDifferences, 0) << "the text is the ratio-1 text scaled up";
}

}  // namespace
