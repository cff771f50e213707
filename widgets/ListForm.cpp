#include "widgets/ListForm.h"
#include "widgets/InputCodes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>

namespace TabulaControl::platform {

namespace {

// Hands the list's keys and mouse releases to the form's handlers.
class ListFilter : public QObject {
public:
    ListFilter(QObject* parent, ListForm& form) : QObject(parent), form_(form) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress)
            return key(static_cast<QKeyEvent*>(event));
        if (event->type() == QEvent::MouseButtonRelease)
            mouseUp(static_cast<QMouseEvent*>(event));
        return false;
    }

private:
    bool key(QKeyEvent* e)
    {
        const int16_t code = keyCode(e->key());
        notify(form_.onKeyDown, code, shiftState(e->modifiers()));
        return code == 13 || code == 27;
    }
    void mouseUp(QMouseEvent* e)
    {
        const MouseArgs args = mouseArgs(e, e->button());
        notify(form_.onMouseUp, args.Button, args.Shift, args.X, args.Y);
    }

    ListForm& form_;
};

}  // namespace

QRect screenRect(const QWidget* widget)
{
    return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
}

ListForm::ListForm(QWidget* control) : control_(control)
{
    form_ = new QWidget(control, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    form_->setObjectName(QStringLiteral("ListForm"));
    list_ = new QListWidget(form_);
    list_->setObjectName(QStringLiteral("List1"));
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->installEventFilter(new ListFilter(list_, *this));
    list_->viewport()->installEventFilter(new ListFilter(list_, *this));
    timer_ = new QTimer(form_);
    timer_->setObjectName(QStringLiteral("Timer1"));
    QObject::connect(timer_, &QTimer::timeout, form_, [this] { notify(onTimer); });
    watchFocusElsewhere();
}

// Another window's activation or a widget outside the list taking the focus
// means the user has left, whether or not the list's own focus ever came: a
// window manager may refuse it, or grant it late. The grid's window, and its
// focus widget of the moment the list opened, may still be catching up with
// the click that opened it.
void ListForm::watchFocusElsewhere()
{
    QObject::connect(qApp, &QApplication::focusChanged, form_, [this](QWidget*, QWidget* now) {
        if (Visible() && now && now->window() != form_ && now != focusAtOpening_)
            focusTakenElsewhere_ = true;
    });
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, form_, [this](QWindow* window) {
        if (Visible() && window != form_->windowHandle() && window != control_->window()->windowHandle())
            focusTakenElsewhere_ = true;
    });
}

ListForm::~ListForm()
{
    if (form_)
        QObject::disconnect(qApp, nullptr, form_, nullptr);
}

bool ListForm::Visible() const { return form_ && form_->isVisible(); }

void ListForm::Show()
{
    focusArrived_ = false;
    focusTakenElsewhere_ = false;
    focusAtOpening_ = control_->window()->focusWidget();
    form_->show();
    form_->raise();
    form_->activateWindow();
}

void ListForm::Hide()
{
    if (form_)
        form_->hide();
}

void ListForm::Place(const QRect& screen) { form_->setGeometry(screen); }

void ListForm::Clear() { list_->clear(); }
void ListForm::AddItem(const QString& item) { list_->addItem(item); }
int32_t ListForm::ListCount() const { return list_->count(); }
QString ListForm::List(int32_t index) const
{
    const QListWidgetItem* item = list_->item(index);
    return item ? item->text() : QString();
}
int32_t ListForm::ListIndex() const { return list_->currentRow(); }
void ListForm::setListIndex(int32_t index) { list_->setCurrentRow(index); }

double ListForm::FontSize() const
{
    const QFont font = list_->font();
    return font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * 0.75;
}

int32_t ListForm::ListHeight() const { return list_->height(); }

void ListForm::setListSize(int32_t width, int32_t height)
{
    list_->setGeometry(0, 0, std::max(0, width), std::max(0, height));
}

void ListForm::FocusList()
{
    form_->activateWindow();
    list_->setFocus(Qt::OtherFocusReason);
}

void ListForm::setTimer(int32_t intervalMs, bool enabled)
{
    timer_->setInterval(intervalMs);
    if (enabled)
        timer_->start();
    else
        timer_->stop();
}

bool ListForm::focusHasLeft()
{
    const bool listFocused = QApplication::focusWidget() == list_;
    if (listFocused)
        focusArrived_ = true;
    return focusTakenElsewhere_ || (focusArrived_ && !listFocused);
}

bool ListForm::GridWindowActive() const { return QApplication::activeWindow() == control_->window(); }

void ListForm::RaiseGridWindow()
{
    control_->window()->raise();
    control_->window()->activateWindow();
}

}  // namespace TabulaControl::platform
