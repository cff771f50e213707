#include "widgets/Controls.h"
#include "widgets/InputCodes.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <iterator>

namespace TabulaControl {

std::shared_ptr<StdFont> StdFont::fromQFont(const QFont& font)
{
    auto result = std::make_shared<StdFont>();
    result->Name = font.family();
    result->Size = font.pointSizeF() > 0 ? static_cast<float>(font.pointSizeF())
                                         : static_cast<float>(font.pixelSize() * 0.75);
    result->Bold = font.bold();
    result->Italic = font.italic();
    result->Underline = font.underline();
    result->Strikethrough = font.strikeOut();
    return result;
}

QFont StdFont::toQFont() const
{
    QFont font(Name);
    font.setPointSizeF(Size > 0 ? Size : 8.25);
    font.setBold(Bold);
    font.setItalic(Italic);
    font.setUnderline(Underline);
    font.setStrikeOut(Strikethrough);
    return font;
}

}  // namespace TabulaControl

namespace TabulaControl::platform {

namespace {


// The region's part of an image of device pixels shown over width x height
// widget pixels: at a device pixel ratio other than 1 each device pixel
// lands on one of the screen's. One rectangle at a time, as Qt copies
// pixels straight across only inside a rectangular clip.
void drawSurfaceImage(QPainter& painter, const QImage& image, int width, int height, const QRegion& region)
{
    const bool deviceSized = image.width() == width && image.height() == height;
    for (const QRect& r : region) {
        painter.setClipRect(r);
        if (deviceSized)
            painter.drawImage(0, 0, image);
        else
            painter.drawImage(QRectF(0, 0, width, height), image);
    }
}

// Shows the surface image and turns input into the grid's notifications.
class SurfaceView : public QWidget {
public:
    SurfaceView(QWidget* parent, Surface& surface, const SurfaceHandlers& handlers)
        : QWidget(parent), surface_(surface), handlers_(handlers)
    {
        setObjectName(QStringLiteral("picGrid"));
        setFocusPolicy(Qt::StrongFocus);
        setMouseTracking(true);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

    // Asks for what changed on the surface to be shown once the current
    // event is handled; requests made before then are answered together.
    // Qt's paint request is made now, with one pixel: posted at low
    // priority, it comes after the render, which adds what changed to it.
    void requestPaint()
    {
        if (painting_ || paintQueued_ || !isVisible())
            return;
        paintQueued_ = true;
        QMetaObject::invokeMethod(this, [this] { showChanges(); }, Qt::QueuedConnection);
        update(0, 0, 1, 1);
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        const QRegion changed = takeChanges();
        QPainter painter(this);
        drawSurfaceImage(painter, surface_.image(), surface_.width(), surface_.height(), event->region());
        const QRegion unshown = changed - event->region();
        if (!unshown.isEmpty())
            update(unshown);
    }
    bool focusNextPrevChild(bool) override { return false; }

    void mousePressEvent(QMouseEvent* e) override
    {
        arriveUnlessMoved(e);
        pressedLeft_ = e->button() == Qt::LeftButton;
        notify(handlers_.mouseDown, mouseArgs(e, e->button()));
    }
    void mouseReleaseEvent(QMouseEvent* e) override
    {
        notify(handlers_.mouseUp, mouseArgs(e, e->button()));
        bool clicked = pressedLeft_ && e->button() == Qt::LeftButton && !afterDoubleClick_;
        pressedLeft_ = false;
        afterDoubleClick_ = false;
        if (clicked && rect().contains(e->position().toPoint()))
            notify(handlers_.click);
    }
    void mouseDoubleClickEvent(QMouseEvent* e) override
    {
        if (e->button() != Qt::LeftButton)
            return mousePressEvent(e);
        afterDoubleClick_ = true;
        pressedLeft_ = true;
        notify(handlers_.dblClick);
    }
    void mouseMoveEvent(QMouseEvent* e) override
    {
        lastMove_ = {e->position(), e->globalPosition(), e->buttons(), e->modifiers()};
        movedSinceShown_ = true;
        notify(handlers_.mouseMove, mouseArgs(e, e->buttons()));
    }
    void showEvent(QShowEvent*) override { movedSinceShown_ = false; }

    void keyPressEvent(QKeyEvent* e) override
    {
        int16_t shift = shiftState(e->modifiers());
        notify(handlers_.keyDown, keyCode(e->key()), shift);
        if (!e->text().isEmpty())
            notify(handlers_.keyPress, static_cast<int16_t>(e->text().at(0).unicode()));
    }
    void keyReleaseEvent(QKeyEvent* e) override
    {
        if (e->isAutoRepeat())
            return;
        notify(handlers_.keyUp, keyCode(e->key()), shiftState(e->modifiers()));
    }

public:
    void repeatLastMove()
    {
        QCoreApplication::postEvent(this, new QMouseEvent(QEvent::MouseMove, lastMove_.position, lastMove_.global,
                                                          Qt::NoButton, lastMove_.buttons, lastMove_.modifiers));
    }

private:
    // Qt sends no move to a surface shown under a pointer at rest, so a
    // press there before any move is taken as the pointer's arrival first,
    // to find the border it rests on.
    void arriveUnlessMoved(const QMouseEvent* press)
    {
        if (movedSinceShown_ || mapFromGlobal(QCursor::pos()) != press->position().toPoint())
            return;
        QMouseEvent move(QEvent::MouseMove, press->position(), press->globalPosition(), Qt::NoButton, Qt::NoButton,
                         press->modifiers());
        mouseMoveEvent(&move);
    }

    struct Move {
        QPointF position;
        QPointF global;
        Qt::MouseButtons buttons;
        Qt::KeyboardModifiers modifiers;
    };

    // Makes the owed render and adds the pixels that changed to the paint.
    void showChanges()
    {
        paintQueued_ = false;
        if (isVisible())
            update(takeChanges());
    }
    // Making the owed pixels may ask for them to be shown; that request is
    // already being answered.
    QRegion takeChanges()
    {
        const QScopedValueRollback painting(painting_, true);
        return surface_.takeChangedRegion();
    }

    Surface& surface_;
    const SurfaceHandlers& handlers_;
    bool pressedLeft_ = false;
    bool painting_ = false;
    bool paintQueued_ = false;
    bool afterDoubleClick_ = false;
    bool movedSinceShown_ = false;
    Move lastMove_;
};

// Hands the focus back whenever a scroll bar takes it.
class FocusReturn : public QObject {
public:
    FocusReturn(QObject* parent, ScrollBar& bar) : QObject(parent), bar_(bar) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn)
            notify(bar_.onFocus);
        return false;
    }

private:
    ScrollBar& bar_;
};

template <class W>
W* named(W* widget, const char* name)
{
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QWidget* makeScrollBar(QWidget* parent, Qt::Orientation orientation, const char* name)
{
    auto* bar = named(new QScrollBar(orientation, parent), name);
    bar->setRange(1, 1);
    bar->setSingleStep(1);
    bar->setPageStep(1);
    return bar;
}

QWidget* makeButton(QWidget* parent, const char* name, const QString& caption)
{
    auto* button = named(new QPushButton(caption, parent), name);
    button->setFocusPolicy(Qt::NoFocus);
    button->setGeometry(0, 0, 19, 15);
    button->hide();
    return button;
}

QWidget* makeEditor(QWidget* parent)
{
    auto* edit = named(new QLineEdit(parent), "txtEdit");
    edit->setFrame(false);
    edit->hide();
    return edit;
}

QWidget* makeSizer(QWidget* parent)
{
    auto* sizer = named(new QWidget(parent), "picSizer");
    sizer->setAutoFillBackground(true);
    QPalette palette = sizer->palette();
    palette.setColor(QPalette::Window, Qt::black);
    sizer->setPalette(palette);
    sizer->hide();
    return sizer;
}

// The cursor of each MousePointer value; values past the table show the arrow.
Qt::CursorShape cursorShape(int16_t shape)
{
    static constexpr Qt::CursorShape shapes[] = {
        Qt::ArrowCursor,     Qt::ArrowCursor,   Qt::CrossCursor,     Qt::IBeamCursor,       // 0-3
        Qt::ArrowCursor,     Qt::SizeAllCursor, Qt::SizeBDiagCursor, Qt::SizeVerCursor,     // 4-7
        Qt::SizeFDiagCursor, Qt::SizeHorCursor, Qt::UpArrowCursor,   Qt::WaitCursor,        // 8-11
        Qt::ForbiddenCursor, Qt::BusyCursor,    Qt::WhatsThisCursor, Qt::SizeAllCursor};    // 12-15
    return shape >= 0 && shape < int16_t(std::size(shapes)) ? shapes[shape] : Qt::ArrowCursor;
}

}  // namespace

int32_t Child::Left() const { return widget_ ? widget_->x() : 0; }
int32_t Child::Top() const { return widget_ ? widget_->y() : 0; }
int32_t Child::Width() const { return widget_ ? widget_->width() : 0; }
int32_t Child::Height() const { return widget_ ? widget_->height() : 0; }

void Child::Move(int32_t left, int32_t top, int32_t width, int32_t height)
{
    if (widget_)
        widget_->setGeometry(left, top, std::max(0, width), std::max(0, height));
}
void Child::setLeft(int32_t left) { Move(left, Top(), Width(), Height()); }
void Child::setTop(int32_t top) { Move(Left(), top, Width(), Height()); }
bool Child::Visible() const { return widget_ && !widget_->isHidden(); }
void Child::appendPlacement(std::vector<int64_t>& key) const
{
    const QWidget* widget = widget_.data();
    if (!widget) {
        key.insert(key.end(), {0, 0, 0, 0, 0});
        return;
    }
    const QRect r = widget->geometry();
    key.insert(key.end(), {!widget->isHidden(), r.x(), r.y(), r.width(), r.height()});
}
void Child::setVisible(bool visible) { ifAlive([visible](QWidget& w) { w.setVisible(visible); }); }
void Child::SetFocus() { ifAlive([](QWidget& w) { w.setFocus(Qt::OtherFocusReason); }); }
bool Child::HasFocus() const { return widget_ && widget_->hasFocus(); }
void Child::ZOrderFront() { ifAlive([](QWidget& w) { w.raise(); }); }
void Child::ZOrderBack() { ifAlive([](QWidget& w) { w.lower(); }); }

ScrollBar::ScrollBar(QWidget* widget) : Child(widget)
{
    QObject::connect(bar(), &QScrollBar::valueChanged, bar(), [this] { notify(onChange); });
    widget->installEventFilter(new FocusReturn(widget, *this));
}

QScrollBar* ScrollBar::bar() const { return static_cast<QScrollBar*>(widget()); }

int32_t ScrollBar::Value() const { return bar()->value(); }

void ScrollBar::setValue(int32_t value) { bar()->setValue(value); }

void ScrollBar::setMax(int32_t max)
{
    max_ = max;
    const int before = bar()->value();
    {
        QSignalBlocker quiet(bar());
        bar()->setRange(1, std::max<int>(1, max));
    }
    if (bar()->value() != before)
        notify(onChange);
}

void ScrollBar::setLargeChange(int16_t pageStep) { bar()->setPageStep(std::max<int>(1, pageStep)); }

Button::Button(QWidget* button) : Child(button)
{
    QObject::connect(static_cast<QPushButton*>(button), &QPushButton::clicked, button, [this] { notify(onClick); });
}


void SurfaceChild::Refresh() { ifAlive([](QWidget& w) { static_cast<SurfaceView&>(w).requestPaint(); }); }
void SurfaceChild::postKey(int16_t keyCode)
{
    const int key = keyCode == 38 ? Qt::Key_Up : keyCode == 40 ? Qt::Key_Down : 0;
    if (!widget() || key == 0)
        return;
    QCoreApplication::postEvent(widget(), new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier));
    QCoreApplication::postEvent(widget(), new QKeyEvent(QEvent::KeyRelease, key, Qt::NoModifier));
}

void SurfaceChild::repeatMouseMove() { ifAlive([](QWidget& w) { static_cast<SurfaceView&>(w).repeatLastMove(); }); }

QString SurfaceChild::ToolTipText() const { return widget() ? widget()->toolTip() : QString(); }
void SurfaceChild::setToolTipText(const QString& text) { ifAlive([&](QWidget& w) { w.setToolTip(text); }); }

int32_t Window::ScaleWidth() const { return control_->width(); }
int32_t Window::ScaleHeight() const { return control_->height(); }

void Window::setMousePointer(int16_t shape)
{
    mousePointer_ = shape;
    if (shape == 0)
        control_->unsetCursor();
    else
        control_->setCursor(cursorShape(shape));
}

void Window::setBackColor(OleColor colour)
{
    backColor_ = colour;
    control_->update();
}

void Window::setBorder(int16_t style)
{
    border_ = style;
    control_->update();
}

QString Window::ToolTipText() const { return control_->toolTip(); }

FontRef Window::AmbientFont() const
{
    QWidget* parent = control_->parentWidget();
    return StdFont::fromQFont(parent ? parent->font() : QApplication::font());
}

double Window::TextWidth(const QString& s) const
{
    constexpr int dotsPerMeterAt96Dpi = 3780;
    static const QImage device = [] {
        QImage image(1, 1, QImage::Format_RGB32);
        image.setDotsPerMeterX(dotsPerMeterAt96Dpi);
        image.setDotsPerMeterY(dotsPerMeterAt96Dpi);
        return image;
    }();
    return QFontMetricsF(QFont(control_->font(), &device), &device).horizontalAdvance(s);
}

const QImage& Window::face() const
{
    const FaceKey key{control_->width(), control_->height(), control_->devicePixelRatioF(), backColor_, border_};
    if (key == faceKey_)
        return face_;
    Surface face(key.width, key.height, key.ratio);
    face.setBackColor(backColor_);
    face.clear();
    Rect all{0, 0, face.width(), face.height()};
    switch (border_) {
    case 1:
        face.edge(all, RaisedOuter, SideAll | EdgeMono);
        break;
    case 2:
        face.edge(all, RaisedInner, SideLeft | SideTop);
        face.edge(all, RaisedOuter, SideRight | SideBottom);
        break;
    case 3:
        face.edge(all, SunkenInner, SideLeft | SideTop);
        face.edge(all, SunkenOuter, SideRight | SideBottom);
        break;
    default:
        break;
    }
    faceKey_ = key;
    face_ = face.image();
    return face_;
}

void Window::paint(const QRegion& region) const
{
    QPainter painter(control_);
    // Children cover most of the face; only what Qt asks for is drawn.
    drawSurfaceImage(painter, face(), control_->width(), control_->height(), region);
}

Controls::Controls(QWidget* control)
    : window(control),
      picGrid(new SurfaceView(control, surface, handlers), surface),
      txtEdit(makeEditor(picGrid.widget())),
      scrHorizontal(makeScrollBar(control, Qt::Horizontal, "scrHorizontal")),
      scrVertical(makeScrollBar(control, Qt::Vertical, "scrVertical")),
      cmdButton(makeButton(picGrid.widget(), "cmdButton", QStringLiteral("..."))),
      cmdLookup(makeButton(picGrid.widget(), "cmdLookup", QStringLiteral("\u25BE"))),
      picSizer(makeSizer(control)),
      listForm(control)
{
    surface.setChangeHandler([this] { picGrid.Refresh(); });
}

Controls::~Controls() = default;

}  // namespace TabulaControl::platform
