#pragma once

class QWidget;

// A button that opens a grid bound to an SQLite table of a million orders,
// made in the user's data folder on first use.
QWidget* ordersDatabaseButton(QWidget& window);
