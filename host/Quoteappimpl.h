#pragma once

#include "host/Quoteclients.h"
#include "host/XMLDocument.h"
#include "host/Zelutils.h"

/// The details of a quote that are not in its XML document. Owned by the host.
class ZEL_HOST_EXPORT TQuoteInfo : public TPersistent
{
    Q_OBJECT
    Q_PROPERTY(QString Description READ Get_Description WRITE Set_Description NOTIFY DescriptionChanged)
    Q_PROPERTY(qint64 QuoteKey READ Get_QuoteKey WRITE Set_QuoteKey NOTIFY QuoteKeyChanged)
    Q_PROPERTY(TBaseClient *Client READ Get_Client WRITE Set_Client NOTIFY ClientChanged)
public:
    explicit TQuoteInfo(QObject *parent = nullptr);
    ~TQuoteInfo() override;

    QString Get_Description() const { return m_description; } ///< What the adviser calls the quote.
    void Set_Description(const QString &value);
    /// A number for the host's own use, such as its key of the quote; 0 initially.
    qint64 Get_QuoteKey() const { return m_quoteKey; }
    void Set_QuoteKey(qint64 value);
    /// The chosen client, not owned; nil when no client is chosen or the chosen client has been deleted.
    TBaseClient *Get_Client() const { return m_client; }
    void Set_Client(TBaseClient *value);
    /// Copies description, key and client from another TQuoteInfo.
    void Assign(const QObject *source) override;

Q_SIGNALS:
    void DescriptionChanged(const QString &description);
    void QuoteKeyChanged(qint64 key);
    void ClientChanged(TBaseClient *client);

private:
    QString m_description;
    qint64 m_quoteKey = 0;
    QPointer<TBaseClient> m_client;
};

/// The interface of one quote's editor for the host application. The host owns the editor.
class ZEL_HOST_EXPORT TLegacyEditor : public QObject
{
    Q_OBJECT
public:
    TLegacyEditor();
    ~TLegacyEditor() override;

    /// The clients that the quote can be for.
    virtual TBaseClients *Get_Clients() const = 0;
    /// The plan number.
    virtual qint32 Get_Plan() const = 0;
    virtual void Set_Plan(qint32 plan) = 0;
    /// The quote's details, not owned; nil when none were set or they have been destroyed.
    virtual TQuoteInfo *Get_QuoteInfo() const = 0;
    virtual void Set_QuoteInfo(TQuoteInfo *info) = 0;
    virtual QString Get_StyleSheet() const = 0; ///< As the host set it.
    /// The quote's document, shared.
    virtual IXMLDOMDocument2Ptr Get_XML() const = 0;
    virtual void Set_XML(const IXMLDOMDocument2Ptr &xml) = 0;
    /// Calculates the quote. Abstract: throws EAbstractError unless a product's editor overrides it.
    virtual void CalculateQuote();
    /// The prepopulation source, shared; nil for a quote that started empty.
    virtual IQuotePrePopPtr Get_PrepPop() const = 0;
    virtual void Set_PrepPop(const IQuotePrePopPtr &prepPop) = 0;
    /// The module of the open form; nil when no form is open.
    virtual IZelModulePtr Get_Module() const = 0;
    /// Hands the finished quote to @p finalisor, which may be nil. True on success.
    virtual bool SaveToFinalisor(const IDispatchPtr &finalisor) = 0;

    /// Ends the editing of the quote and emits QuoteDisposed. The host may destroy the editor during the
    /// signal.
    virtual void DisposeQuote();

Q_SIGNALS:
    void QuoteDisposed(); ///< The editing is over. The host may destroy the editor in its slot.

protected:
    /// Stops DisposeQuote from emitting QuoteDisposed, so that the host does not destroy the editor a second
    /// time.
    void BeginDestruction() noexcept { m_destroying = true; }
    bool IsDestroying() const noexcept { return m_destroying; } ///< Whether BeginDestruction was called.

private:
    bool m_destroying = false;
};
