#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace QuoteDesk
{

/// What the catalogue says of the funds of a product, by number and by name.
class FundNames
{
public:
    struct Fund {
        QString name;
        QString nameAfrikaans;
        QString factSheet; ///< An address; blank for none.
        int groupID = 0;
        QString nameEnglish = {};
        QString groupName = {};
        QString caption = {}; ///< What it is called in the selector, when that is not its name.

        /// Whether it has that name in one of the languages.
        bool isCalled(const QString &other) const
        {
            const QString text = other.trimmed();
            return text == name || text == nameAfrikaans || text == nameEnglish;
        }
    };

    /// The first entry of a fund counts.
    void add(int fundID, const Fund &fund);
    bool contains(int fundID) const { return m_funds.contains(fundID); }
    Fund fund(int fundID) const { return m_funds.value(fundID); }
    /// nullptr for a fund that is not known; until the next change.
    const Fund *find(int fundID) const;
    /// Another name for a fund, until forgetOtherNames().
    void addOtherName(int fundID, const QString &name);
    void forgetOtherNames() { m_byOtherName.clear(); }
    /// The funds of that name in either language, of that caption or other name; upper and lower case,
    /// blanks and the kind of a dash make no difference.
    QList<int> named(const QString &name) const;

private:
    static QString folded(const QString &name);

    QHash<int, Fund> m_funds;
    QList<int> m_order;                          ///< The funds as they were added.
    mutable QHash<QString, QList<int>> m_byName; ///< Made when a name is first asked for.
    QHash<QString, QList<int>> m_byOtherName;
};

} // namespace QuoteDesk
