#include "host/XMLDocument.h"

IXMLDOMDocument2::~IXMLDOMDocument2() = default;

namespace
{
class TXMLDocument : public IXMLDOMDocument2
{
public:
    bool loadXML(const QString &text) override
    {
        // A fresh document each time: elements of the former one stay valid with whoever holds them.
        m_document = QDomDocument();
        m_error = {};
        const bool read = m_document.setContent(text, true, &m_error.Reason, &m_error.Line, &m_error.Column);
        if (!read)
            m_document = QDomDocument();
        return read;
    }

    QString xml() const override { return m_document.toString(-1); }
    TXMLParseError parseError() const override { return m_error; }
    QDomElement documentElement() const override { return m_document.documentElement(); }
    QDomElement createElement(const QString &tagName) override { return m_document.createElement(tagName); }

    void setDocumentElement(const QDomElement &element) override
    {
        const QDomElement former = m_document.documentElement();
        if (former.isNull())
            m_document.appendChild(element);
        else
            m_document.replaceChild(element, former);
    }

    QDomElement selectSingleNode(const QString &path) const override
    {
        const QStringList names = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
        QDomNode node = m_document;
        for (const QString &name : names) {
            node = node.firstChildElement(name);
            if (node.isNull())
                return {};
        }
        return node.toElement();
    }

private:
    QDomDocument m_document;
    TXMLParseError m_error;
};
} // namespace

IXMLDOMDocument2Ptr CreateXMLDocument()
{
    return std::make_shared<TXMLDocument>();
}
