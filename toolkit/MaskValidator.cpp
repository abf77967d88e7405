#include "toolkit/MaskValidator_p.h"

#include "data/NumberEntry.h"
#include "toolkit/Digits_p.h"

#include <algorithm>
#include <utility>

namespace Zel
{

MaskValidator::MaskValidator(TtsMask mask, TypedEntry &entry, QObject *parent)
    : QValidator(parent), m_mask(std::move(mask)), m_entry(entry)
{
}

MaskValidator::State MaskValidator::validate(QString &input, int &position) const
{
    if (input == m_entry.shown)
        return Acceptable;
    const Shown shown = read(input);
    note(input, shown.isRight);
    if (!shown.isRight)
        return Invalid;
    m_entry.shown = shown.text;
    m_entry.comma = shown.comma;
    if (shown.text != input) {
        position += static_cast<int>(shown.text.size() - input.size());
        position = qBound(0, position, static_cast<int>(shown.text.size()));
        input = shown.text;
    }
    return Acceptable;
}

// @p input with the comma that was typed instead of the shown point.
QString MaskValidator::asTyped(const QString &input) const
{
    const qsizetype comma = m_entry.comma;
    const QStringView before = QStringView(m_entry.shown).left(comma + 1);
    if (comma < 0 || !input.startsWith(before))
        return input;
    QString typed = input;
    typed[comma] = u',';
    return typed;
}

MaskValidator::Shown MaskValidator::read(const QString &input) const
{
    const QString typed = asTyped(input);
    if (m_mask.Accepts(typed))
        return {true, typed};
    if (typed.count(u',') == 1) {
        const QString pointed = QString(typed).replace(u',', u'.');
        if (m_mask.Accepts(pointed))
            return {true, pointed, typed.indexOf(u',')};
    }
    if (hasThousands(typed))
        return {true, typed};
    const std::optional<QString> corrected = m_mask.Corrected(typed);
    return corrected ? Shown{true, *corrected} : Shown{};
}

// Whether @p text, with thousands separators, is a number that fits the mask or the beginning of one.
bool MaskValidator::hasThousands(const QString &text) const
{
    QString digits;
    for (const QChar c : text) {
        if (IsDigit(c))
            digits.append(c);
        else if (c != u',' && c != u'.')
            return false;
    }
    const NumberEntry entry(text);
    if (entry.isNumber())
        return m_mask.Accepts(entry.plain());
    return m_mask.Accepts(digits) && entry.isUnfinished();
}

void MaskValidator::note(const QString &input, bool isRight) const
{
    const QString &shown = m_entry.shown;
    m_entry.touched = true;
    if (!shown.isEmpty() && input.size() > shown.size() && input.startsWith(shown)) {
        m_entry.typed += QStringView(input).sliced(shown.size());
        return;
    }
    const auto same = std::mismatch(input.cbegin(), input.cend(), shown.cbegin(), shown.cend());
    const auto end = std::mismatch(input.crbegin(), input.crend(), shown.crbegin(), shown.crend());
    const bool replaced = same.first == input.cbegin() && end.first == input.crbegin();
    if (isRight)
        m_entry.typed = (replaced ? std::exchange(m_entry.refused, {}) : QString()) + asTyped(input);
    else if (replaced)
        m_entry.refused += input;
}

} // namespace Zel
