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

struct GoldenCase {
    const char* name;
    std::function<void(Golden&)> play;
};

// The pixels are taken from Picture(); the child widgets' state must not
// change when the picture is read.
class Golden : public TabulaTest::NavigationFixture, public ::testing::WithParamInterface<GoldenCase> {
public:
    Tabula& g() { return grid(); }
    // rows x cols data cells under a header row "Col1|Col2|...", every cell
    // holding "r<row>c<col>"; AutoRedraw is left on.
    void fill(int32_t rows, int32_t cols)
    {
        g().setAutoRedraw(false);
        g().setCols(cols);
        g().setRows(0);
        for (int32_t r = 1; r <= rows; ++r) {
            QStringList fields;
            for (int32_t c = 1; c <= cols; ++c)
                fields.append(QString("r%1c%2").arg(r).arg(c));
            g().AddItem(fields.join('\t'));
        }
        for (int32_t c = 1; c <= cols; ++c)
            g().setTextMatrix(0, c, QString("Col%1").arg(c));
        g().setAutoRedraw(true);
    }
    void step(QScrollBar* bar, int by)
    {
        bar->triggerAction(by > 0 ? QAbstractSlider::SliderSingleStepAdd : QAbstractSlider::SliderSingleStepSub);
    }
    void keys(std::initializer_list<Qt::Key> list, Qt::KeyboardModifiers mods = {})
    {
        for (Qt::Key k : list)
            key(k, mods);
    }
    // Cells as {row, col}.
    void drag(QPoint fromCell, QPoint toCell)
    {
        press(centre(fromCell.x(), fromCell.y()));
        dragTo(centre(toCell.x(), toCell.y()));
        release(centre(toCell.x(), toCell.y()));
    }
    using NavigationFixture::clickCell;
    using NavigationFixture::horizontal;
    using NavigationFixture::vertical;

protected:
    void TearDown() override
    {
        grid().setBackColor(0xFFFFFF);
        grid().setForeColor(0x80000012);
        NavigationFixture::TearDown();
    }
};

QString goldenPath(const char* name) { return QString(TABULA_GOLDEN_DIR "/%1.png").arg(name); }

// What a host can observe of the child widgets: the bars and the editor.
QString childState(Golden& t)
{
    QString out;
    for (QScrollBar* bar : {t.vertical(), t.horizontal()})
        out += QString("%1 %2..%3 v%4 p%5; ")
                   .arg(bar->isVisible())
                   .arg(bar->minimum())
                   .arg(bar->maximum())
                   .arg(bar->value())
                   .arg(bar->pageStep());
    QWidget* editor = t.g().findChild<QWidget*>("txtEdit");
    const QRect r = editor->geometry();
    return out + QString("edit %1 %2,%3 %4x%5").arg(editor->isVisible()).arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

TEST_P(Golden, PictureMatchesTheStoredImage)
{
    GetParam().play(*this);
    const QString before = childState(*this);
    const QImage actual = g().Picture().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(childState(*this), before) << "reading the picture changed what the host sees";
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
    auto f = std::make_shared<StdFont>();
    *f = StdFont{name, size, bold, italic, underline, strike};
    return f;
}

using T = Golden&;
const auto down = Qt::Key_Down, right = Qt::Key_Right;
const auto shift = Qt::ShiftModifier;

const GoldenCase cases[] = {
    {"defaults", [](T) {}},
    {"filled", [](T t) { t.fill(8, 4); }},
    {"format_string_alignments",
     [](T t) {
         t.g().setFormatString("<Name|^Qty|>Price|Long");
         t.g().AddItem("Apples\t3\t1.20\tA text far too long for its column");
         t.g().AddItem("Pears\t12\t0.95\tA&B");
     }},
    {"alternate_rows", [](T t) { t.fill(6, 3), t.g().setBackColorAlt(0xE0FFE0), t.g().setUseBackColorAlt(true); }},
    {"colours",
     [](T t) {
         t.fill(5, 3);
         t.g().setBackColor(0xFFF0E0), t.g().setForeColor(0x800000), t.g().setBackColorFixed(0x00FFFF);
         t.g().setForeColorFixed(0x0000FF), t.g().setGridLineColor(0x008000), t.g().setBackColorBkg(0x404080);
     }},
    {"item_colours",
     [](T t) { t.g().setCols(3), t.g().AddItem("red on\tyellow", 0x00FFFF, 0x0000FF), t.g().AddItem("plain\trow"); }},
    {"fixed_flat", [](T t) { t.fill(4, 3), t.g().setBackColorFixed(0xFFE0C0), t.g().setFixedStyle(Flat); }},
    {"fixed_flat_without_grid", [](T t) { t.fill(4, 3), t.g().setFixedStyle(Flat), t.g().setShowGrid(false); }},
    {"grid_dotted", [](T t) { t.fill(6, 4), t.g().setGridLineColor(0), t.g().setGridSolid(false); }},
    {"grid_dotted_flat", [](T t) { t.fill(6, 4), t.g().setGridSolid(false), t.g().setFixedStyle(Flat); }},
    {"without_grid", [](T t) { t.fill(6, 4), t.g().setShowGrid(false); }},
    {"without_headers", [](T t) { t.fill(6, 4), t.g().setColHeader(false), t.g().setRowHeader(false); }},
    {"without_header_row", [](T t) { t.fill(3, 3), t.g().setColHeader(false); }},
    {"without_header_column", [](T t) { t.fill(3, 3), t.g().setRowHeader(false); }},
    {"border_none", [](T t) { t.fill(3, 3), t.g().setBackColorBkg(0xFF0000), t.g().setBorderStyle(NoBorder); }},
    {"fonts",
     [](T t) {
         t.fill(5, 3), t.g().setRowHeight(0, 22), t.g().setFont(font("DejaVu Serif", 10, false, true, true));
         t.g().setFontFixed(font("DejaVu Sans", 11, true, false, false, true));
     }},
    {"sizes",
     [](T t) {
         t.fill(6, 4), t.g().setColWidth(0, 12), t.g().setColWidth(2, 20), t.g().setColWidth(3, 110);
         t.g().setRowHeight(2, 30), t.g().setRowHeight(3, 4);
     }},
    {"coloured_text_at_any_ratio",
     [](T t) {
         t.g().setForeColor(0x0000FF), t.g().setForeColorFixed(0xFF0000), t.g().setFormatString("<Left|^Centre|>Right|Box");
         t.g().setColMask(4, checkmark);
         t.g().AddItem("Apples\t3\t1.20\t1"), t.g().AddItem("Pears\t12\t0.95\t0"), t.g().AddItem("Plums\t7\t2.10\t1");
         for (int r = 4; r <= 30; ++r)
             t.g().AddItem(QString("Row %1\t%1\t%1.00\t%2").arg(r).arg(r % 2));
         t.g().setRowHeight(1, 20), t.g().setRowHeight(3, 30), t.g().setGridSolid(false);
         t.step(t.vertical(), 1);  // 21 pixels: no whole number of device pixels at ratio 1.5
     }},
    {"check_boxes",
     [](T t) {
         t.g().setFormatString("Done|^Tick|Text"), t.g().setColMask(1, checkmark), t.g().setColMask(2, checkmark);
         t.g().AddItem("1\t0\tone"), t.g().AddItem("0\t1\ttwo"), t.g().AddItem("\tTrue\tthree");
         t.g().setRowHeight(3, 30);
     }},
    {"no_rows", [](T t) { t.fill(3, 3), t.g().setRows(0); }},
    {"marks_after_keys", [](T t) { t.fill(8, 4), t.keys({down, right, right, down}); }},
    {"block_by_shift_keys", [](T t) { t.fill(8, 4), t.clickCell(2, 2), t.keys({down, down, right}, shift); }},
    {"block_by_mouse_drag", [](T t) { t.fill(8, 4), t.drag({4, 3}, {2, 1}); }},
    {"block_then_click_elsewhere", [](T t) { t.fill(8, 4), t.drag({1, 1}, {3, 3}), t.clickCell(6, 2); }},
    {"block_without_grid",
     [](T t) { t.fill(8, 4), t.g().setShowGrid(false), t.clickCell(2, 2), t.keys({right, down}, shift); }},
    {"selection_by_row",
     [](T t) { t.fill(8, 4), t.g().setSelectionMode(SelectionByRow), t.clickCell(3, 2), t.keys({down}); }},
    {"selection_by_column", [](T t) { t.fill(8, 4), t.g().setSelectionMode(SelectionByCol), t.clickCell(2, 3); }},
    {"header_clicks_select_lines", [](T t) { t.fill(8, 4), t.clickCell(0, 2), t.clickCell(4, 0); }},
    {"selection_not_allowed",
     [](T t) { t.fill(8, 4), t.g().setAllowSelection(false), t.clickCell(2, 2), t.keys({down}, shift); }},
    {"editor_open", [](T t) { t.fill(6, 3), t.clickCell(2, 2), t.keys({Qt::Key_X, Qt::Key_Y}); }},
    {"editor_committed", [](T t) { t.fill(6, 3), t.clickCell(2, 2), t.keys({Qt::Key_X, Qt::Key_Return}); }},
    {"scrolled_by_bars", [](T t) { t.fill(40, 12), t.vertical()->setValue(10), t.horizontal()->setValue(4); }},
    {"page_down_and_end", [](T t) { t.fill(40, 12), t.keys({Qt::Key_PageDown, Qt::Key_End}); }},
    {"one_step_down_and_right",
     [](T t) {
         t.fill(40, 12), t.clickCell(3, 2), t.keys({down}, shift);
         t.step(t.vertical(), 1), t.step(t.horizontal(), 1);
     }},
    {"one_step_up_and_left",
     [](T t) {
         t.fill(40, 12), t.vertical()->setValue(6), t.horizontal()->setValue(3), t.clickCell(8, 4);
         t.step(t.vertical(), -1), t.step(t.horizontal(), -1);
     }},
    {"one_steps_by_row_without_grid",
     [](T t) {
         t.fill(40, 12), t.g().setShowGrid(false), t.g().setSelectionMode(SelectionByRow), t.clickCell(2, 2);
         t.step(t.vertical(), 1), t.step(t.vertical(), 1), t.step(t.vertical(), -1);
     }},
    {"one_steps_by_column_without_headers",
     [](T t) {
         t.fill(40, 12), t.g().setColHeader(false), t.g().setRowHeader(false);
         t.g().setSelectionMode(SelectionByCol), t.clickCell(2, 2);
         t.step(t.horizontal(), 1), t.step(t.horizontal(), 1), t.step(t.horizontal(), -1);
     }},
    {"one_step_with_editor_open",
     [](T t) { t.fill(40, 12), t.clickCell(2, 2), t.keys({Qt::Key_Q}), t.step(t.horizontal(), 1); }},
    {"block_partly_scrolled_off", [](T t) { t.fill(40, 12), t.drag({2, 2}, {6, 3}), t.vertical()->setValue(4); }},
    {"auto_redraw_off_keeps_the_old_picture",
     [](T t) {
         t.fill(6, 3), t.g().setAutoRedraw(false), t.g().setTextMatrix(1, 1, "changed");
         t.g().AddItem("added\trow"), t.g().setTopRow(2), t.clickCell(3, 2);
     }},
    {"auto_redraw_off_then_refresh",
     [](T t) {
         t.fill(6, 3), t.g().setAutoRedraw(false), t.g().setTextMatrix(1, 1, "changed");
         t.g().AddItem("added\trow"), t.g().Refresh();
     }},
    {"top_row_stored_then_key", [](T t) { t.fill(30, 4), t.g().setTopRow(5), t.keys({down}); }},
    {"font_object_changed_after_repaint",
     [](T t) {
         auto f = font("DejaVu Sans", 9, false, false);
         t.fill(4, 3), t.g().setFont(f), f->Bold = true, t.g().setForeColor(0x0000FF);
     }},
    {"back_colour_changed_by_another_grid", [](T t) { t.fill(4, 3), Tabula().setBackColor(0x00FFFF); }},
    {"host_repaints_from_a_key_event",
     [](T t) {
         t.fill(6, 3);
         QObject::connect(t.g().events(), &TabulaEvents::KeyDown, [&g = t.g()] { g.setTextMatrix(1, 1, "key"); });
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
    scene->play(*this);
    const qreal ratio = g().devicePixelRatioF();
    const QImage picture = g().Picture().convertToFormat(QImage::Format_RGB32);
    const QImage reference = QImage(goldenPath(scene->name)).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(reference.isNull());
    EXPECT_EQ(g().Picture().devicePixelRatio(), ratio);
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
