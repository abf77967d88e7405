#pragma once

#include "export/zel_toolkit_export.h"

#include <QHash>
#include <QObject>

#include <optional>
#include <vector>

/// An input mask: defines the text of a cell character by character. In the mask's text "#" is a digit,
/// "[...]" is optional, "*n" repeats the next element up to n times, and any other character stands for
/// itself:
/// "[#][#][#].[#][#]" is up to three digits, a point and up to two digits.
class ZEL_TOOLKIT_EXPORT TtsMask
{
public:
    TtsMask() = default;
    /// Parses a mask. Throws EConvertError, which names @p text, when @p text is not a mask.
    explicit TtsMask(const QString &text);

    const QString &Text() const noexcept { return m_text; }      ///< The text of the mask.
    bool IsEmpty() const noexcept { return m_elements.empty(); } ///< An empty mask accepts any text.
    /// Whether @p text is the beginning of a text that the mask describes. True for the empty text.
    bool Accepts(QStringView text) const;
    /// Converts a typed or pasted text for the cell. A comma before the decimals becomes a point, and every
    /// number that NumberEntry accepts is converted: "R 1 234,56" becomes "1234.56". Returns nothing when the
    /// text does not fit: letters, a minus, several lines, more digits than the mask has, and the ambiguous
    /// "1,234".
    std::optional<QString> Corrected(const QString &text) const;

private:
    struct Element {
        QChar literal; ///< null for a digit
        bool optional = false;
    };
    QString m_text;
    std::vector<Element> m_elements;
};

/// The input masks of a grid's columns, by name.
class ZEL_TOOLKIT_EXPORT TtsMaskDefs : public QObject
{
    Q_OBJECT
public:
    explicit TtsMaskDefs(QObject *parent = nullptr);
    ~TtsMaskDefs() override;
    /// Adds or replaces a mask. Throws EConvertError when @p text is not a mask.
    void Add(const QString &name, const QString &text);
    /// The mask of that name. Throws EListError for an unknown name.
    const TtsMask &Mask(const QString &name) const;

private:
    QHash<QString, TtsMask> m_masks;
};
