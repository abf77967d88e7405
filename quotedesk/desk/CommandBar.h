#pragma once

#include "look/Chip.h"

#include <QAction>
#include <QList>
#include <QPointer>
#include <QWidget>

#include <optional>

class QToolButton;

namespace QuoteDesk
{

class TextLabel;

/// What the command bar says about the page in front.
struct BarHead {
    QString title;
    std::optional<ChipText> state = {};
    QString product = {};
};

/// A command of the command bar; without an action it is a line between two groups.
struct BarCommand {
    QAction *action = nullptr;
    bool hasCaption = true; ///< whether the button has a caption where there is room
    friend bool operator==(const BarCommand &, const BarCommand &) = default;
};

/// The bar above a page: its title and state, and the commands that belong to it. Each command has one
/// button.
///
/// In a narrow bar the product goes first, then the captions, whose words stay in the tool tips, then the
/// last buttons, which move into a menu.
class CommandBar : public QWidget
{
    Q_OBJECT
public:
    explicit CommandBar(QWidget *parent = nullptr);
    ~CommandBar() override;

    void setHead(const BarHead &head);
    const QString &title() const noexcept { return m_head.title; }
    /// Sets the commands from left to right, and the one with the filled button, which stands last. The
    /// actions are not owned. A destroyed action loses its button.
    void setCommands(const QList<BarCommand> &commands, QAction *filled = nullptr);
    /// The button of an action; nullptr when it has none. A button in the menu is hidden.
    QToolButton *buttonOf(const QAction *action) const;
    /// The widest that the content becomes, in pixels; the rest of the bar stays empty.
    void setWidestContent(int width);
    /// Fits the bar into a low or a narrow window.
    void setTight(bool low, bool narrow);

    TextLabel *lblTitle;
    Chip *chpState;
    TextLabel *lblProduct;
    QToolButton *btnMore; ///< opens the menu with the commands for which there is no room

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    class Button;
    struct Item {
        Button *button = nullptr; ///< nullptr for a line
        QAction *action = nullptr;
        bool hasCaption = true;
        bool isFilled = false;
        int x = 0; ///< of a line
    };
    /// How much of the content is in the bar.
    struct Fit {
        bool captions = true;
        qsizetype shown = 0; ///< the number of items before the filled button
        int width = 0;       ///< of all buttons
    };

    void arrange();
    void placeButtons(const Fit &fit, int &right);
    void fillMenu(qsizetype shown);
    void placeHead(QRect content, int right);
    Fit fitFor(int room) const;
    int widthOf(const Item &item, bool captions) const;
    int widthOfItems(qsizetype shown, bool captions) const;
    void retext();

    BarHead m_head;
    QList<BarCommand> m_commands;
    QPointer<QAction> m_filled;
    QList<Item> m_items;
    int m_widest = 0;
    bool m_isLow = false;
    bool m_isNarrow = false;
    bool m_isArranging = false;
};

} // namespace QuoteDesk
