#pragma once

class QMainWindow;
class QSettings;

namespace TabulaControl {
class Tabula;
}

// A File menu: open and save CSV files with a progress dialog, Print Preview,
// the desktop's colours, and the column layout kept between runs.
void addFileMenu(QMainWindow& window, TabulaControl::Tabula& grid, QSettings& settings);
