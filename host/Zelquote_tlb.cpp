#include "host/Zelquote_tlb.h"

#include "toolkit/TApplication.h"

Zel::IDispatch::~IDispatch() = default;
IQuotePrePop::~IQuotePrePop() = default;
IRibbonItem::~IRibbonItem() = default;

TQuotePrePop::TQuotePrePop(QVariantMap values) : m_values(std::move(values)) {}

TQuotePrePop::~TQuotePrePop() = default;

HResult TQuotePrePop::get_Value(const QString &name, QVariant &value) noexcept
{
    return SafecallGuard([&] { value = m_values.value(name); });
}

TRibbonItem::TRibbonItem(QAction *action, QString name, qint32 index, TRibbonClick onClick)
    : m_action(action), m_name(std::move(name))
{
    if (action && onClick) {
        m_connection = connectGuarded(
            action, &QAction::triggered, action,
            [click = std::move(onClick), itemName = m_name, index] { click(itemName, index); });
    }
}

TRibbonItem::~TRibbonItem()
{
    QObject::disconnect(m_connection);
}

QAction &TRibbonItem::liveAction() const
{
    if (!m_action) {
        throw Exception(QCoreApplication::translate("TRibbonItem", "The ribbon item \"%1\" no longer exists.")
                            .arg(m_name));
    }
    return *m_action;
}

HResult TRibbonItem::get_Name(QString &name) noexcept
{
    return SafecallGuard([&] {
        liveAction();
        name = m_name;
    });
}

HResult TRibbonItem::get_Enabled(WordBool &enabled) noexcept
{
    return SafecallGuard([&] { enabled = ToWordBool(liveAction().isEnabled()); });
}

HResult TRibbonItem::put_Enabled(WordBool enabled) noexcept
{
    return SafecallGuard([&] { liveAction().setEnabled(enabled != WordFalse); });
}
