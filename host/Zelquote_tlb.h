#pragma once

#include "export/zel_host_export.h"
#include "host/SafeCall.h"

#include <QAction>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <functional>
#include <memory>

/// The two-byte Boolean of the host's interfaces: true has all bits set.
using WordBool = qint16;
constexpr WordBool WordTrue = -1; ///< All bits set.
constexpr WordBool WordFalse = 0; ///< No bit set.
/// WordTrue or WordFalse.
constexpr WordBool ToWordBool(bool value) noexcept
{
    return value ? WordTrue : WordFalse;
}

// On Windows the global name IDispatch belongs to a structure in the system's headers, which a host may
// include before or after this one.
#ifdef Q_OS_WIN
namespace Zel
{
#endif
/// The root of the host's reference-counted interfaces. A handle (`...Ptr`) keeps its object alive; an empty
/// handle is nil. The name on every system is Zel::IDispatch. The global name also exists; on Windows only
/// for hosts that define ZEL_GLOBAL_IDISPATCH and include no Windows header.
class ZEL_HOST_EXPORT IDispatch
{
public:
    IDispatch() = default;
    virtual ~IDispatch();
    IDispatch(const IDispatch &) = delete;
    IDispatch &operator=(const IDispatch &) = delete;
};
#ifdef Q_OS_WIN
} // namespace Zel
#ifdef ZEL_GLOBAL_IDISPATCH
using Zel::IDispatch;
#endif
#else
namespace Zel
{
using ::IDispatch;
} // namespace Zel
#endif
using IDispatchPtr = std::shared_ptr<Zel::IDispatch>;

/// The source of a quote's starting values, when the quote does not start empty. Closing the window of an
/// editor with such a source only hides the editor, because the values cannot be requested twice.
class ZEL_HOST_EXPORT IQuotePrePop : public Zel::IDispatch
{
public:
    ~IQuotePrePop() override;
    /// The starting value of the field called @p name; an invalid variant when there is none.
    virtual HResult get_Value(const QString &name, QVariant &value) noexcept = 0;
};
using IQuotePrePopPtr = std::shared_ptr<IQuotePrePop>;

/// One item of the host's ribbon.
class ZEL_HOST_EXPORT IRibbonItem : public Zel::IDispatch
{
public:
    ~IRibbonItem() override;
    /// The name by which a module binds the item's clicks; not the visible caption.
    virtual HResult get_Name(QString &name) noexcept = 0;
    /// Whether users can click the item.
    virtual HResult get_Enabled(WordBool &enabled) noexcept = 0;
    /// Enables or disables the item; WordFalse disables, any other value enables.
    virtual HResult put_Enabled(WordBool enabled) noexcept = 0;
};
using IRibbonItemPtr = std::shared_ptr<IRibbonItem>;

/// A prepopulation source over a map of values.
class ZEL_HOST_EXPORT TQuotePrePop : public IQuotePrePop
{
public:
    explicit TQuotePrePop(QVariantMap values = {}); ///< The starting values by field name.
    ~TQuotePrePop() override;
    HResult get_Value(const QString &name, QVariant &value) noexcept override;

private:
    QVariantMap m_values;
};

/// Receives the clicks of a ribbon item: the item's name and its index.
using TRibbonClick = std::function<void(const QString &name, qint32 index)>;

/// A ribbon item over an action that the host places on its ribbon. The action is not owned. After the action
/// is destroyed, every call returns a failure result.
class ZEL_HOST_EXPORT TRibbonItem : public IRibbonItem
{
public:
    /// @p name and @p index are passed to @p onClick each time @p action is triggered. An exception of
    /// @p onClick goes to the application's exception report.
    TRibbonItem(QAction *action, QString name, qint32 index = 0, TRibbonClick onClick = {});
    ~TRibbonItem() override;
    HResult get_Name(QString &name) noexcept override;
    HResult get_Enabled(WordBool &enabled) noexcept override;
    HResult put_Enabled(WordBool enabled) noexcept override;

private:
    QAction &liveAction() const;

    QPointer<QAction> m_action;
    QString m_name;
    QMetaObject::Connection m_connection;
};
