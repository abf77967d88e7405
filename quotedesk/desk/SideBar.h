#pragma once

#include <QAbstractListModel>
#include <QWidget>

#include <optional>

class QAction;
class QListView;
class QVBoxLayout;

namespace QuoteDesk
{

/// A place of the side bar.
struct SidePlace {
    QString picture; ///< a name of toolkit/Glyphs
    QString title;
    int count = -1; ///< of what the place lists; below 0 for none
    friend bool operator==(const SidePlace &, const SidePlace &) = default;
};

/// An open quote of the side bar.
struct SideQuote {
    QString client; ///< the first line
    QString title;  ///< the second line
    bool isModified = false;
    friend bool operator==(const SideQuote &, const SideQuote &) = default;
};

/// The rows of the side bar: the places, a caption, the open quotes.
class SideModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum class Kind { Place, Caption, Quote };
    enum Role { KindRole = Qt::UserRole, CountRole, SecondLineRole, ModifiedRole, PictureRole };

    explicit SideModel(QObject *parent = nullptr);
    ~SideModel() override;

    void setPlaces(const QList<SidePlace> &places);
    void setQuotes(const QList<SideQuote> &quotes);
    const QList<SidePlace> &places() const noexcept { return m_places; }
    const QList<SideQuote> &quotes() const noexcept { return m_quotes; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    Kind kindOf(int row) const;
    /// The number of the page, counted over places and open quotes, of a row; -1 for the caption.
    int pageOf(int row) const;
    int rowOf(int page) const; ///< The row of a page.

private:
    QVariant dataOfPlace(const SidePlace &place, int role) const;
    QVariant dataOfQuote(const SideQuote &quote, int role) const;

    QList<SidePlace> m_places;
    QList<SideQuote> m_quotes;
};

/// The bar at the side of the main window: the command for a new quote, the places, the open quotes, and
/// commands at the foot. As a rail it is narrow and shows pictures and initials alone; tool tips have the
/// words.
///
/// Places and open quotes are rows of one list. The arrow keys move from row to row and show its page.
class SideBar : public QWidget
{
    Q_OBJECT
public:
    /// @p begin is the command of the filled button; it is not owned.
    explicit SideBar(QAction *begin, QWidget *parent = nullptr);
    ~SideBar() override;

    /// Adds a command at the foot; it is not owned.
    void addCommand(QAction *action);
    void setPlaces(const QList<SidePlace> &places);
    void setQuotes(const QList<SideQuote> &quotes);
    /// Marks the row of a page, counted over places and open quotes.
    void setCurrentPage(int page);
    int currentPage() const;

    bool isRail() const noexcept { return m_isRail; }
    void setRail(bool rail);

    QListView *lvPages; ///< the places and the open quotes
    const SideModel &model() const noexcept { return *m_model; }
    /// The cross that closes the quote of a row, in the coordinates of the list; empty for other rows and in
    /// the rail.
    QRect closeRect(const QModelIndex &index) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void pageWanted(int page); ///< a row was chosen, by pointer or key
    void leftForPage();        ///< Enter on a row: the page should get the focus
    /// An open quote is to be closed; counted from 0.
    void closeWanted(int quote);
    /// All open quotes but this one are to be closed.
    void closeOthersWanted(int quote);

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    class Button;
    class Delegate;

    bool pointerEvent(QEvent *event);
    bool keyEvent(const QKeyEvent &event);
    void showMenu(const QPoint &place, const QModelIndex &index);
    int quoteAt(const QModelIndex &index) const;
    void retext();
    void arrange();

    SideModel *m_model;
    Delegate *m_delegate;
    Button *m_begin;
    QVBoxLayout *m_foot;
    QList<Button *> m_buttons;
    bool m_isRail = false;
    bool m_isSetting = false;
};

} // namespace QuoteDesk
