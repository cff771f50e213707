#pragma once

#include <TabulaControl/TabulaGlobal.h>

#include <QList>
#include <QWidget>

#include <memory>

namespace TabulaControl {

class Tabula;

namespace detail {
struct GeneralControls;
}

// The design-time page that edits a grid's general settings: it loads them
// from the first selected grid and writes them back when applied.
class TABULACONTROL_EXPORT General : public QWidget {
    Q_OBJECT
public:
    explicit General(QWidget* parent = nullptr);
    ~General() override;

    void PropertyPage_SelectionChanged(const QList<Tabula*>& selectedControls);
    void PropertyPage_ApplyChanges();
    // Whether an edit was made since the page was loaded or applied.
    bool Changed() const { return changed_; }

signals:
    // The page has edits to apply.
    void changedChanged(bool changed);

private:
    void markChanged();
    void setChanged(bool changed);

    std::unique_ptr<detail::GeneralControls> controls_;
    QList<Tabula*> selected_;
    bool changed_ = false;
};

}  // namespace TabulaControl
