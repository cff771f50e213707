#pragma once

namespace TabulaControl {
class Tabula;
}

namespace TabulaControl::detail {

// Makes calls that reach the grid through its meta-object (property writes
// from QObject::setProperty, QUiLoader and Designer) report a failure
// instead of throwing it through Qt: the property keeps its value, the write
// returns false, and the failure is logged and emitted as errorOccurred.
// QMetaObject::invokeMethod calls the class's static meta-call directly and
// does not pass here.
void guardMetaCalls(Tabula& grid);

}  // namespace TabulaControl::detail
