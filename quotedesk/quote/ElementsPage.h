#pragma once

#include <QCoreApplication>
#include <QList>
#include <QMap>
#include <QPair>
#include <QString>
#include <QWidget>

#include <functional>

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

/// A page of labelled elements, one under the other.
class ElementsPage : public QWidget
{
    Q_OBJECT
public:
    explicit ElementsPage(QWidget *parent = nullptr);
    ~ElementsPage() override;

    /// Once.
    void setElements(const QList<PageElement> &elements);
    /// Shows the values; an element without one is blank.
    void show(const QMap<QString, QString> &details);
    using QWidget::show;
    /// Writes the values of this page; a blank element has none.
    void readInto(QMap<QString, QString> &details) const;
    /// A sentence for each value that is missing or wrong.
    QStringList problems() const;
    /// Caption and value, as people read them, of what was entered.
    QList<QPair<QString, QString>> shown() const;

Q_SIGNALS:
    /// The user changed an entry.
    void edited();

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Line {
        PageElement element;
        QWidget *frame = nullptr;
        QWidget *caption = nullptr;
        QWidget *editor = nullptr;
        Zel::ElementValue *value = nullptr;
    };
    template <class TFrame>
    void add(const PageElement &element, TFrame *frame, QWidget *caption, QWidget *editor);
    void retext();
    void arrange();
    void notice();
    void showProblems();
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
