#pragma once

#include "host/Quoteclients.h"
#include "host/XMLDocument.h"
#include "host/Zelutils.h"

/// What is known of a quote beside its XML document. Owned by the host.
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
    /// Eight bytes that mean something to the host only, such as its key of the quote; 0 at the start.
    qint64 Get_QuoteKey() const { return m_quoteKey; }
    void Set_QuoteKey(qint64 value);
    /// The chosen client, not owned; nil when none is chosen or it has been deleted since.
    TBaseClient *Get_Client() const { return m_client; }
    void Set_Client(TBaseClient *value);
    /// Copies description, key and client of another quote's information.
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

/// The editor of one quote as the host application knows it. The host owns it.
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
    /// The quote's information, not owned; nil when there is none or it has been destroyed.
    virtual TQuoteInfo *Get_QuoteInfo() const = 0;
    virtual void Set_QuoteInfo(TQuoteInfo *info) = 0;
    virtual QString Get_StyleSheet() const = 0; ///< As the host set it.
    /// The quote's document, shared.
    virtual IXMLDOMDocument2Ptr Get_XML() const = 0;
    virtual void Set_XML(const IXMLDOMDocument2Ptr &xml) = 0;
    /// Works the quote out. Abstract: raises EAbstractError until a product's editor supplies it.
    virtual void CalculateQuote();
    /// The prepopulation source, shared; nil for a quote begun empty.
    virtual IQuotePrePopPtr Get_PrepPop() const = 0;
    virtual void Set_PrepPop(const IQuotePrePopPtr &prepPop) = 0;
    /// The module of the open form; nil when no form is open.
    virtual IZelModulePtr Get_Module() const = 0;
    /// Hands the finished quote to @p finalisor, which may be nil; true when that is done.
    virtual bool SaveToFinalisor(const IDispatchPtr &finalisor) = 0;

    /// The editing of the quote is over: tells the host through QuoteDisposed. The host may destroy the
    /// editor then and there.
    virtual void DisposeQuote();

Q_SIGNALS:
    void QuoteDisposed(); ///< The host may destroy the editor in answer.

protected:
    /// From here on DisposeQuote tells nobody: an editor already being destroyed is not to be destroyed
    /// again.
    void BeginDestruction() noexcept { m_destroying = true; }
    bool IsDestroying() const noexcept { return m_destroying; } ///< Whether BeginDestruction was called.

private:
    bool m_destroying = false;
};
