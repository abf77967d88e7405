#include "host/Quoteappimpl.h"

TQuoteInfo::TQuoteInfo(QObject *parent) : TPersistent(parent) {}

TQuoteInfo::~TQuoteInfo() = default;

void TQuoteInfo::Set_Description(const QString &value)
{
    if (m_description == value)
        return;
    m_description = value;
    Q_EMIT DescriptionChanged(m_description);
}

void TQuoteInfo::Set_QuoteKey(qint64 value)
{
    if (m_quoteKey == value)
        return;
    m_quoteKey = value;
    Q_EMIT QuoteKeyChanged(value);
}

void TQuoteInfo::Set_Client(TBaseClient *value)
{
    if (m_client == value)
        return;
    m_client = value;
    Q_EMIT ClientChanged(value);
}

void TQuoteInfo::Assign(const QObject *source)
{
    const auto *info = qobject_cast<const TQuoteInfo *>(source);
    if (!info) {
        TPersistent::Assign(source);
        return;
    }
    Set_Description(info->m_description);
    Set_QuoteKey(info->m_quoteKey);
    Set_Client(info->m_client);
}

TLegacyEditor::TLegacyEditor() = default;
TLegacyEditor::~TLegacyEditor() = default;

void TLegacyEditor::CalculateQuote()
{
    throw EAbstractError(tr("CalculateQuote is left to each product's own quote editor."));
}

void TLegacyEditor::DisposeQuote()
{
    if (!m_destroying)
        Q_EMIT QuoteDisposed();
}
