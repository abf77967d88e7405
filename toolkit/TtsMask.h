#pragma once

#include "export/zel_toolkit_export.h"

#include <QHash>
#include <QObject>

#include <optional>
#include <vector>

/// What may stand in a cell, character by character. In a mask's text "#" is a digit, "[...]" makes what it
/// holds optional, "*n" repeats the next element up to n times, and any other character stands for itself:
/// "[#][#][#].[#][#]" is up to three digits, a point and up to two digits.
class ZEL_TOOLKIT_EXPORT TtsMask
{
public:
    TtsMask() = default;
    /// Raises EConvertError naming @p text when it is no mask.
    explicit TtsMask(const QString &text);

    const QString &Text() const noexcept { return m_text; }      ///< As it was written.
    bool IsEmpty() const noexcept { return m_elements.empty(); } ///< An empty mask takes any text.
    /// Whether @p text can be typed: it is the beginning of something that the mask describes. The empty
    /// text always can.
    bool Accepts(QStringView text) const;
    /// @p text as it goes into a cell, for text that was typed or pasted: a comma as the point is taken as
    /// the point. A number as people and other programs write it, as NumberEntry reads it, is taken too:
    /// "R 1 234,56" becomes "1234.56". Nothing when the text is refused, and it is refused whole: letters, a
    /// minus, several lines, more digits than the mask holds, and "1,234", which could be either.
    std::optional<QString> Corrected(const QString &text) const;

private:
    struct Element {
        QChar literal; ///< null: a digit
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
    /// Adds or replaces a mask; EConvertError when @p text is no mask.
    void Add(const QString &name, const QString &text);
    /// EListError when there is none of that name.
    const TtsMask &Mask(const QString &name) const;

private:
    QHash<QString, TtsMask> m_masks;
};
