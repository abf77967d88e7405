#include "host/XMLDocument.h"

#include <QCoreApplication>
#include <QXmlStreamReader>

IXMLDOMDocument2::~IXMLDOMDocument2() = default;

namespace
{
// The tree is traversed and destroyed by recursion, and a malicious text must not overflow the stack. A
// Windows program has one or two million bytes of stack; writing a document takes about two thousand bytes
// per level.
constexpr int maxDepth = 256;

/// The place where @p text is nested too deep. Other errors are found when the tree is built.
TXMLParseError findTooDeep(const QString &text)
{
    QXmlStreamReader reader(text);
    int depth = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement)
            --depth;
        else if (token == QXmlStreamReader::StartElement && ++depth > maxDepth)
            return {QCoreApplication::translate("IXMLDOMDocument2",
                                                "The document is nested deeper than %1 elements.")
                        .arg(maxDepth),
                    static_cast<int>(reader.lineNumber()), static_cast<int>(reader.columnNumber())};
    }
    return {};
}

class TXMLDocument : public IXMLDOMDocument2
{
public:
    bool loadXML(const QString &text) override
    {
        // A new QDomDocument keeps elements of the former document valid for their holders.
        m_document = QDomDocument();
        m_error = findTooDeep(text);
        const bool read = m_error.Line == 0 &&
                          m_document.setContent(text, true, &m_error.Reason, &m_error.Line, &m_error.Column);
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
