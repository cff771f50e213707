#pragma once

#include <QtCore/qglobal.h>

// Marks what the TabulaControl library exports. Its own sources define
// TABULACONTROL_LIBRARY; a static build defines TABULACONTROL_STATIC for
// itself and for everything that links it.
#if defined(TABULACONTROL_STATIC)
#define TABULACONTROL_EXPORT
#elif defined(TABULACONTROL_LIBRARY)
#define TABULACONTROL_EXPORT Q_DECL_EXPORT
#else
#define TABULACONTROL_EXPORT Q_DECL_IMPORT
#endif
