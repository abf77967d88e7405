#pragma once

#include "export/zel_commonframes_export.h"

#include <QString>

#include <span>

class QWidget;
struct QMetaObject;

/// One class of the package that a host may create by its name.
struct TFrameClass {
    const char *ClassName;         ///< lives as long as the library
    const char *UnitName;          ///< the unit of the unit table that declares the class
    const QMetaObject *MetaObject; ///< the class's properties and signals
    /// Makes one; @p parent owns it, or the caller does when there is none. Works whether the package was
    /// started or not: it is for tools that look at the classes, such as a form designer.
    QWidget *(*Create)(QWidget *parent);
    bool IsForm; ///< a window of its own rather than a part of a page
};

/// Every frame and form of the package, sorted by class name. A constant: reading it runs nothing.
ZEL_COMMONFRAMES_EXPORT std::span<const TFrameClass> FrameClasses();

/// The class of that exact name; nullptr when there is none.
ZEL_COMMONFRAMES_EXPORT const TFrameClass *FindFrameClass(const QString &className);

extern "C" {
/// Creates a frame or form by its class name, for a host that loads the library at run time. @p parent owns
/// it, or the caller does when there is none; destroy them all before Finalize.
/// Raises Exception when the package has no class of that name, and before Initialize and after Finalize.
ZEL_COMMONFRAMES_EXPORT QWidget *CreateByClassName(const QString &className, QWidget *parent);
}
