#pragma once

class QMainWindow;

namespace TabulaControl {
class Tabula;
}

// Gives window an Edit menu for grid and turns the grid's sheet editing on.
void addEditMenu(QMainWindow& window, TabulaControl::Tabula& grid);
