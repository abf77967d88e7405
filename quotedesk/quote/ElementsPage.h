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
class QScrollArea;
class QVBoxLayout;

namespace Zel
{
class ElementValue;
}

namespace QuoteDesk
{

class BannerStack;
class ProblemLine;

/// One labelled element of a page. Its texts are source texts with the translation context "Elements".
struct PageElement {
    enum class Kind {
        Text,         ///< a line of text
        Code,         ///< a line of text
        Date,         ///< year-month-day
        Number,       ///< a whole number
        Amount,       ///< a number with two decimals
        List,         ///< one of `choices`
        OptionAmount, ///< a number with two decimals that a check box turns on
        EitherAmount, ///< a number with two decimals; of several such elements only one counts
        EitherNumber, ///< the same with a whole number
        EitherDate,   ///< the same with a date
    };
    struct Choice {
        const char *value; ///< the stored value
        const char *text;
    };

    const char *name; ///< The key of the value in the quote's details.
    Kind kind;
    const char *caption;
    QList<Choice> choices = {};
    /// Checks a value: returns a sentence with the problem, or a blank text. Also called for a missing value.
    std::function<QString(const QString &value)> problem = {};
};

/// A page of labelled elements in a column. An invalid entry is kept and displayed as typed, with the reason
/// below it. A text that the editor cannot even display is kept until the user enters something else. An
/// entry is judged when the user leaves its field, not while it is typed; a problem disappears as soon as the
/// entry is right. A banner counts the fields with problems.
class ElementsPage : public QWidget
{
    Q_OBJECT
public:
    explicit ElementsPage(QWidget *parent = nullptr);
    ~ElementsPage() override;

    /// Call once.
    void setElements(const QList<PageElement> &elements);
    /// Shows the stored values; elements without a value are blank.
    void show(const QMap<QString, QString> &details);
    using QWidget::show;
    /// Writes the entries into @p details, invalid ones as typed; blank elements write nothing.
    void readInto(QMap<QString, QString> &details) const;
    /// A missing or wrong value, or an invalid entry.
    struct Problem {
        QString element; ///< the element's name
        QString sentence;
    };
    /// The present problems, those of invalid entries first. They include those that are not shown yet.
    QList<Problem> problems() const;
    /// The line below an element's field; nullptr for an unknown name.
    ProblemLine *problemLine(const QString &element) const;
    /// Gives an element's field the focus and selects its text; false for an unknown name.
    bool enter(const QString &element);
    /// The name of the element that has the focus; blank for none.
    QString entered() const;
    /// Caption and displayed value of each element with an entry.
    QList<QPair<QString, QString>> shown() const;

Q_SIGNALS:
    /// The user has changed an entry.
    void edited();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    struct Line {
        PageElement element;
        QWidget *frame = nullptr;
        QWidget *caption = nullptr;
        QWidget *editor = nullptr;
        Zel::ElementValue *value = nullptr;
        ProblemLine *problem = nullptr;   ///< what is wrong with the entry
        std::optional<QString> kept = {}; ///< the text shown last, until the user changes it
        bool fits = true;                 ///< whether the editor can display that text
    };
    template <class TFrame>
    void add(const PageElement &element, TFrame *frame, QWidget *caption, QWidget *editor);
    bool addPlain(const PageElement &element);
    void addSwitched(const PageElement &element);
    void retext();
    void arrange();
    void notice();
    void judge(const Line &line);
    void judgeAll();
    void clearMended();
    void showCount();
    void order();
    static void showIn(Line &line, const QString &text);
    static QString reasonOf(const Line &line);
    QString problemOf(const Line &line) const;
    QString valueOf(const Line &line) const;
    static QAbstractButton *switchOf(const Line &line);

    BannerStack *m_banners;
    QScrollArea *m_area;
    QVBoxLayout *m_elements;
    QButtonGroup *m_either;
    QList<Line> m_lines;
    bool m_showing = false;
    qsizetype m_counted = 0; ///< the number that the banner says
};

} // namespace QuoteDesk
