#include "toolkit/TtsMask.h"

#include "data/Exceptions.h"
#include "data/NumberEntry.h"
#include "toolkit/Digits_p.h"

using namespace Qt::StringLiterals;

TtsMask::TtsMask(const QString &text) : m_text(text)
{
    const auto bad = [&text]() -> EConvertError {
        return EConvertError(u"\"%1\" is not a valid input mask."_s.arg(text));
    };
    constexpr int longest = 64;
    for (qsizetype i = 0; i < text.size(); ++i) {
        int repeat = 1;
        if (text.at(i) == u'*') {
            repeat = 0;
            for (++i; i < text.size() && Zel::IsDigit(text.at(i)) && repeat <= longest; ++i)
                repeat = repeat * 10 + text.at(i).digitValue();
            if (i == text.size() || repeat < 1 || repeat > longest)
                throw bad();
        }
        Element element;
        element.optional = text.at(i) == u'[';
        if (element.optional && (++i == text.size() || i + 1 == text.size() || text.at(i + 1) != u']'))
            throw bad();
        if (text.at(i) != u'#')
            element.literal = text.at(i);
        if (element.optional)
            ++i;
        m_elements.insert(m_elements.end(), static_cast<std::size_t>(repeat), element);
    }
}

bool TtsMask::Accepts(QStringView text) const
{
    if (m_elements.empty())
        return true;
    // The positions in the mask that the characters read so far can reach.
    const std::size_t count = m_elements.size();
    std::vector<bool> places(count + 1, false);
    places[0] = true;
    for (const QChar c : text) {
        std::vector<bool> next(count + 1, false);
        bool any = false;
        for (std::size_t i = 0; i < count; ++i) {
            if (!places[i])
                continue;
            const Element &element = m_elements[i];
            if (element.optional)
                places[i + 1] = true;
            if (element.literal.isNull() ? Zel::IsDigit(c) : element.literal == c)
                any = next[i + 1] = true;
        }
        if (!any)
            return false;
        places.swap(next);
    }
    return true;
}

std::optional<QString> TtsMask::Corrected(const QString &text) const
{
    if (m_elements.empty() || Accepts(text))
        return text;
    if (text.count(u',') == 1) {
        const QString pointed = QString(text).replace(u',', u'.');
        if (Accepts(pointed))
            return pointed;
    }
    NumberRules rules;
    rules.decimals = Zel::DecimalsKept;
    const NumberEntry entry(text, rules);
    if (!entry.isNumber())
        return std::nullopt;
    // The text may have more trailing zeros than the mask allows.
    for (const QString &plain : {entry.plain(), entry.value().toString()}) {
        if (Accepts(plain))
            return plain;
    }
    return std::nullopt;
}

TtsMaskDefs::TtsMaskDefs(QObject *parent) : QObject(parent) {}
TtsMaskDefs::~TtsMaskDefs() = default;

void TtsMaskDefs::Add(const QString &name, const QString &text)
{
    m_masks.insert(name, TtsMask(text));
}

const TtsMask &TtsMaskDefs::Mask(const QString &name) const
{
    const auto found = m_masks.constFind(name);
    if (found == m_masks.cend())
        throw EListError(u"There is no input mask \"%1\"."_s.arg(name));
    return *found;
}
