#pragma once

#include "host/Zelquote_tlb.h"

#include <QDomDocument>

/// Where and why a text could not be read as XML. Lines and columns count from 1; a line of 0 means no error.
struct TXMLParseError {
    QString Reason; ///< The message; empty without an error.
    int Line = 0;   ///< 0 without an error.
    int Column = 0; ///< 0 without an error.
};

/// An XML document, shared by reference: every handle sees the same tree.
class ZEL_HOST_EXPORT IXMLDOMDocument2 : public Zel::IDispatch
{
public:
    ~IXMLDOMDocument2() override;
    /// Replaces the document by the parsed @p text. False on failure: the document is then empty, and
    /// parseError has the error. A text nested deeper than 256 elements is a failure.
    virtual bool loadXML(const QString &text) = 0;
    /// The document as text, without added white space.
    virtual QString xml() const = 0;
    /// The error of the last loadXML.
    virtual TXMLParseError parseError() const = 0;
    /// The root element; a null element while the document is empty. Elements refer to the document's own
    /// nodes, so changing them changes the document.
    virtual QDomElement documentElement() const = 0;
    /// Creates an element that belongs to this document but is not yet in its tree.
    virtual QDomElement createElement(const QString &tagName) = 0;
    /// Makes @p element the root and replaces a former root.
    virtual void setDocumentElement(const QDomElement &element) = 0;
    /// The first element reached by following @p path, child names separated by "/" from the root's own
    /// name ("Quote/Plan"); a null element when there is none.
    virtual QDomElement selectSingleNode(const QString &path) const = 0;
};
using IXMLDOMDocument2Ptr = std::shared_ptr<IXMLDOMDocument2>;

/// A new, empty document.
ZEL_HOST_EXPORT IXMLDOMDocument2Ptr CreateXMLDocument();
