#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace QuoteDesk
{

/// The catalogue's data about a product's funds, by id and by name.
class FundNames
{
public:
    struct Fund {
        QString name;
        QString nameAfrikaans;
        QString factSheet; ///< the address of the fact sheet; blank for none
        int groupID = 0;
        QString nameEnglish = {};
        QString groupName = {};
        QString caption = {}; ///< the caption in the selector, when it differs from the name

        /// Whether the fund has this name in one of the languages.
        bool isCalled(const QString &other) const
        {
            const QString text = other.trimmed();
            return text == name || text == nameAfrikaans || text == nameEnglish;
        }
    };

    /// Adds a fund; further entries of the same fund are ignored.
    void add(int fundID, const Fund &fund);
    bool contains(int fundID) const { return m_funds.contains(fundID); }
    Fund fund(int fundID) const { return m_funds.value(fundID); }
    /// nullptr for an unknown fund. The pointer is valid until the next change.
    const Fund *find(int fundID) const;
    /// Adds another name for a fund, until forgetOtherNames().
    void addOtherName(int fundID, const QString &name);
    void forgetOtherNames() { m_byOtherName.clear(); }
    /// The funds with this name in either language, this caption or this other name; case, blanks and the
    /// kind of dash are ignored.
    QList<int> named(const QString &name) const;

private:
    static QString folded(const QString &name);

    QHash<int, Fund> m_funds;
    QList<int> m_order;                          ///< in the order in which they were added
    mutable QHash<QString, QList<int>> m_byName; ///< filled at the first search
    QHash<QString, QList<int>> m_byOtherName;
};

} // namespace QuoteDesk
