#include "widgets/AboutBox.h"

#include <QMessageBox>

namespace TabulaControl::platform {

void showAboutBox(QWidget* parent)
{
    QMessageBox box(QMessageBox::Information, QStringLiteral("About Tabula"),
                    QStringLiteral("Tabula 0.1\n\nAn editable data grid: rows and columns of text with fixed "
                                   "headers, selection, column resizing, in-place editing, lookup lists and "
                                   "column buttons."),
                    QMessageBox::Ok, parent);
    box.setObjectName(QStringLiteral("AboutBox"));
    box.exec();
}

}  // namespace TabulaControl::platform
