#pragma once

#include "export/zel_commonframes_export.h"

#include <QString>

#include <span>

class QWidget;
struct QMetaObject;

/// One class of the package that a host may create by its name.
struct TFrameClass {
    const char *ClassName;         ///< valid until the library is unloaded
    const char *UnitName;          ///< the unit in the unit table that declares the class
    const QMetaObject *MetaObject; ///< the class's properties and signals
    /// Creates an instance. @p parent owns it; without a parent the caller does. Works without Initialize,
    /// for tools that inspect the classes, such as a form designer.
    QWidget *(*Create)(QWidget *parent);
    bool IsForm; ///< true for a window, false for a frame on a page
};

/// Every frame and form of the package, sorted by class name. A constant that can be read without Initialize.
ZEL_COMMONFRAMES_EXPORT std::span<const TFrameClass> FrameClasses();

/// The class of that exact name; nullptr when there is none.
ZEL_COMMONFRAMES_EXPORT const TFrameClass *FindFrameClass(const QString &className);

extern "C" {
/// Creates a frame or form by its class name, for a host that loads the library at run time. @p parent owns
/// the new object; without a parent the caller does. Destroy all frames and forms before Finalize.
/// Throws Exception for an unknown class name, before Initialize and after Finalize.
ZEL_COMMONFRAMES_EXPORT QWidget *CreateByClassName(const QString &className, QWidget *parent);
}
