#pragma once

#include <QCoreApplication>
#include <QList>
#include <QMap>
#include <QPair>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

class QAbstractButton;
class QButtonGroup;
class QLabel;
class QVBoxLayout;

namespace Zel
{
class ElementValue;
}

namespace QuoteDesk
{

/// One labelled element of a page. The texts are in the language of the source, context "Elements".
struct PageElement {
    enum class Kind {
        Text,         ///< a line of text
        Code,         ///< a text of at most fifteen characters
        Date,         ///< year-month-day
        Number,       ///< a whole number
        Amount,       ///< a number with two decimals
        List,         ///< one of `choices`
        OptionAmount, ///< a number with two decimals that a check box turns on
        EitherAmount, ///< a number with two decimals, of several elements of which one counts
        EitherNumber, ///< the same with a whole number
        EitherDate,   ///< the same with a date
    };
    struct Choice {
        const char *value; ///< What is stored.
        const char *text;
    };

    const char *name; ///< Of the value among the details of the quote.
    Kind kind;
    const char *caption;
    QList<Choice> choices = {};
    /// What is wrong with a value, in a sentence; blank when nothing is. Asked also for a value not entered.
    std::function<QString(const QString &value)> problem = {};
};

/// A page of labelled elements, one under the other. An entry that is no value of its element is kept as it
/// was typed and shown so again, with the reason beside it; a text that the element cannot even show is kept
/// until something else is entered.
class ElementsPage : public QWidget
{
    Q_OBJECT
public:
    explicit ElementsPage(QWidget *parent = nullptr);
    ~ElementsPage() override;

    /// Once.
    void setElements(const QList<PageElement> &elements);
    /// Shows what was kept; an element of which nothing was is blank.
    void show(const QMap<QString, QString> &details);
    using QWidget::show;
    /// Writes what is entered on this page, as typed where it is no value; a blank element has nothing.
    void readInto(QMap<QString, QString> &details) const;
    /// A sentence for each value that is missing or wrong, and for each entry that is none.
    QStringList problems() const;
    /// Caption and value, as people read them, of what was entered.
    QList<QPair<QString, QString>> shown() const;

Q_SIGNALS:
    /// The user changed an entry.
    void edited();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Line {
        PageElement element;
        QWidget *frame = nullptr;
        QWidget *caption = nullptr;
        QWidget *editor = nullptr;
        Zel::ElementValue *value = nullptr;
        QLabel *reason = nullptr;         ///< Why the entry is no value; hidden while it is one.
        std::optional<QString> kept = {}; ///< What was shown last, while the user has not changed it.
        bool fits = true;                 ///< Whether the editor can show that.
    };
    template <class TFrame>
    void add(const PageElement &element, TFrame *frame, QWidget *caption, QWidget *editor);
    bool addPlain(const PageElement &element);
    void addSwitched(const PageElement &element);
    void retext();
    void arrange();
    void notice();
    void showProblems();
    static void showIn(Line &line, const QString &text);
    static QString reasonOf(const Line &line);
    QStringList entryProblems(bool refused) const;
    QString valueOf(const Line &line) const;
    static QAbstractButton *switchOf(const Line &line);

    QVBoxLayout *m_elements;
    QWidget *m_problemsPanel;
    QLabel *m_warning;
    QLabel *m_problems;
    QButtonGroup *m_either;
    QList<Line> m_lines;
    bool m_showing = false;
};

} // namespace QuoteDesk
