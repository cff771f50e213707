#include "widgets/Controls.h"
#include "widgets/InputCodes.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>

#include <algorithm>

namespace TabulaControl::platform {

namespace {

// Routes the editor's keys and focus loss to its handlers.
class EditorFilter : public QObject {
public:
    EditorFilter(QObject* parent, Editor& editor) : QObject(parent), editor_(editor) {}

protected:
    bool eventFilter(QObject* target, QEvent* event) override
    {
        if (event->type() == QEvent::FocusOut) {
            QTimer::singleShot(0, this, [this] { notify(editor_.onLostFocus); });
            return false;
        }
        if (event->type() != QEvent::KeyPress || forwarding_)
            return false;
        auto* key = static_cast<QKeyEvent*>(event);
        if (isTabKey(key))
            return focusNeighbourOutsideGrid(static_cast<QWidget*>(target), key->key() == Qt::Key_Tab &&
                                                                                !(key->modifiers() & Qt::ShiftModifier));
        return filterKey(target, key);
    }

private:
    static bool isTabKey(const QKeyEvent* e)
    {
        const bool tab = e->key() == Qt::Key_Tab || e->key() == Qt::Key_Backtab;
        return tab && !(e->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    }

    // Tab keeps its text-box meaning: the focus goes to the host form's next
    // (or previous) control outside the grid, and the edit commits on the
    // focus loss. Without such a control the key does nothing.
    static bool focusNeighbourOutsideGrid(QWidget* edit, bool forward)
    {
        QWidget* grid = edit->parentWidget() ? edit->parentWidget()->parentWidget() : nullptr;
        if (!grid)
            return true;
        QWidget* w = grid;
        for (int guard = 0; guard < 100000; ++guard) {
            w = forward ? w->nextInFocusChain() : w->previousInFocusChain();
            if (!w || w == grid)
                return true;
            const bool takesTab = (w->focusPolicy() & Qt::TabFocus) && w->isVisible() && w->isEnabled();
            if (takesTab && !grid->isAncestorOf(w)) {
                w->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
                return true;
            }
        }
        return true;
    }

    bool filterKey(QObject* target, QKeyEvent* e)
    {
        notify(editor_.onKeyDown, keyCode(e->key()), shiftState(e->modifiers()));
        if (!editor_.Visible())
            return true;
        if (e->text().isEmpty() || !editor_.onKeyPress)
            return false;
        int16_t typed = static_cast<int16_t>(e->text().at(0).unicode());
        const int16_t original = typed;
        editor_.onKeyPress(typed);
        if (typed == original)
            return false;
        if (typed != 0)
            forward(target, e, QString(QChar(static_cast<char16_t>(typed))));
        return true;
    }

    void forward(QObject* target, QKeyEvent* e, const QString& text)
    {
        QKeyEvent replaced(QEvent::KeyPress, e->key(), e->modifiers(), text);
        forwarding_ = true;
        QCoreApplication::sendEvent(target, &replaced);
        forwarding_ = false;
    }

    Editor& editor_;
    bool forwarding_ = false;
};

int qtKeyOf(int16_t keyAscii)
{
    const QChar ch(static_cast<char16_t>(keyAscii));
    if (ch.isLetterOrNumber() && ch.unicode() < 128)
        return ch.toUpper().unicode();
    return 0;
}

}  // namespace

Editor::Editor(QWidget* edit) : Child(edit)
{
    edit->installEventFilter(new EditorFilter(edit, *this));
    QObject::connect(static_cast<QLineEdit*>(edit), &QLineEdit::textChanged, edit,
                     [this](const QString& text) { applyMaxLength(text.size()); });
}


QLineEdit* Editor::edit() const { return static_cast<QLineEdit*>(widget()); }
void Editor::setSelection(int32_t start, int32_t length)
{
    if (length > 0)
        edit()->setSelection(start, length);
    else
        edit()->setCursorPosition(start);
}

void Editor::setFont(const StdFont& font)
{
    edit()->setFont(font.toQFont());
}

void Editor::setColors(OleColor back, OleColor fore)
{
    QPalette palette = edit()->palette();
    palette.setColor(QPalette::Base, QColor::fromRgb(translateColor(back)));
    palette.setColor(QPalette::Text, QColor::fromRgb(translateColor(fore)));
    edit()->setPalette(palette);
}

void Editor::typeKey(int16_t keyAscii)
{
    const QString text(QChar(static_cast<char16_t>(keyAscii)));
    QKeyEvent press(QEvent::KeyPress, qtKeyOf(keyAscii), Qt::NoModifier, text);
    QCoreApplication::sendEvent(edit(), &press);
    QKeyEvent release(QEvent::KeyRelease, qtKeyOf(keyAscii), Qt::NoModifier, text);
    QCoreApplication::sendEvent(edit(), &release);
}
QString Editor::Text() const { return edit()->text(); }
void Editor::setText(const QString& text)
{
    applyMaxLength(text.size());
    edit()->setText(text);
}
void Editor::setMaxLength(int32_t length)
{
    maxLength_ = std::max(length, 0);
    applyMaxLength(edit()->text().size());
}
int32_t Editor::MaxLength() const { return maxLength_; }

void Editor::applyMaxLength(qsizetype textLength)
{
    constexpr qsizetype Unlimited = 32767;
    const qsizetype limit = maxLength_ > 0 ? maxLength_ : Unlimited;
    edit()->setMaxLength(static_cast<int>(std::min(std::max(limit, textLength), Unlimited)));
}

}  // namespace TabulaControl::platform
