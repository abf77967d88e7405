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

// On Windows the global name is that of a structure in the system's own headers, which a host may include
// before these or after them.
#ifdef Q_OS_WIN
namespace Zel
{
#endif
/// The root of the host's reference-counted interfaces. A handle (`...Ptr`) keeps its object alive; an empty
/// handle is nil. Its name on every system is Zel::IDispatch; the global name stays beside it, on Windows for
/// hosts that define ZEL_GLOBAL_IDISPATCH and include none of Windows' own headers.
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

/// Where a quote's starting values come from when it is not begun empty. An editor that has one is kept
/// (hidden) when its window is closed, because what was prepopulated cannot be asked for twice.
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
    /// The name by which a module binds the item's clicks; not the caption that users see.
    virtual HResult get_Name(QString &name) noexcept = 0;
    /// Whether users can click it.
    virtual HResult get_Enabled(WordBool &enabled) noexcept = 0;
    /// Lets users click it or not; WordFalse is no, anything else yes.
    virtual HResult put_Enabled(WordBool enabled) noexcept = 0;
};
using IRibbonItemPtr = std::shared_ptr<IRibbonItem>;

/// A prepopulation source over values that the host already has.
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

/// A ribbon item over an action, which the host puts on whatever looks like its ribbon. The action is not
/// owned; once it is gone, every call answers with a failure result.
class ZEL_HOST_EXPORT TRibbonItem : public IRibbonItem
{
public:
    /// @p name is the item's name, @p index what its clicks pass on. Each time @p action is triggered,
    /// @p onClick runs; what it raises goes to the application's exception report.
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
