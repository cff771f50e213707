#include "demo/EditMenu.h"

#include <TabulaControl/Tabula.h>

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenuBar>
#include <QUndoStack>

// The Edit menu of a sheet: undo and redo from the grid's own stack, the
// clipboard slots, and the switches for spreadsheet keys and header sorting.
// The grid takes these keys itself while it has the focus, so the actions'
// shortcuts serve the rest of the window.
void addEditMenu(QMainWindow& window, TabulaControl::Tabula& grid)
{
    grid.setSpreadsheetKeys(true);
    grid.setSortOnHeaderClick(true);
    QMenu* edit = window.menuBar()->addMenu(QObject::tr("&Edit"));
    QAction* undo = grid.undoStack()->createUndoAction(edit, QObject::tr("&Undo"));
    undo->setShortcut(QKeySequence::Undo);
    QAction* redo = grid.undoStack()->createRedoAction(edit, QObject::tr("&Redo"));
    redo->setShortcut(QKeySequence::Redo);
    edit->addAction(undo);
    edit->addAction(redo);
    edit->addSeparator();
    edit->addAction(QObject::tr("Cu&t"), QKeySequence::Cut, &grid, &TabulaControl::Tabula::cut);
    edit->addAction(QObject::tr("&Copy"), QKeySequence::Copy, &grid, &TabulaControl::Tabula::copySelection);
    edit->addAction(QObject::tr("&Paste"), QKeySequence::Paste, &grid, &TabulaControl::Tabula::paste);
    edit->addSeparator();
    QAction* keys = edit->addAction(QObject::tr("Spreadsheet &keys"));
    keys->setCheckable(true);
    keys->setChecked(grid.spreadsheetKeys());
    QObject::connect(keys, &QAction::toggled, &grid, &TabulaControl::Tabula::setSpreadsheetKeys);
    QAction* sorting = edit->addAction(QObject::tr("&Sort on header click"));
    sorting->setCheckable(true);
    sorting->setChecked(grid.sortOnHeaderClick());
    QObject::connect(sorting, &QAction::toggled, &grid, &TabulaControl::Tabula::setSortOnHeaderClick);
}
