// The headers that nearly every unit includes; precompiled once per target.
#pragma once
#ifdef __cplusplus
#include <QtCore/QtCore>
#ifdef QT_WIDGETS_LIB
#include <QtGui/QtGui>
#include <QtWidgets/QtWidgets>
#endif
#ifdef QT_TESTLIB_LIB
#include <QtTest/QtTest>
#endif
#include <functional>
#include <memory>
#include <optional>
#include <vector>
#endif
