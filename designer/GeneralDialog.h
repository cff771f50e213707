#pragma once

#include <QDialog>
#include <QPointer>
#include <QVariantMap>

class QLabel;

namespace TabulaControl {
class General;
class Tabula;
}

namespace TabulaControl::designer {

// The General page as a dialog on one grid of a form. Applying writes the
// page to the grid and, inside Designer, records every property that moved
// on the form, so it is undoable and saved with the form.
class GeneralDialog : public QDialog {
    Q_OBJECT
public:
    explicit GeneralDialog(Tabula* grid);

private:
    bool apply();
    void recordChanges(const QVariantMap& before);

    QPointer<Tabula> grid_;
    General* page_;
    QLabel* error_;
};

}  // namespace TabulaControl::designer
