#pragma once

#include "data/Currency.h"
#include "toolkit/LookFonts_p.h"

#include <QObject>
#include <QPointer>

#include <optional>

class QBoxLayout;
class QLabel;
class TPanel;
class TfraFundAllocation;

namespace Zel
{

class SplitBar;

/// The allocation frame in the application look: a panel with caption and commands in one line, the grid, and
/// below it a bar that shows how the investment is split. Does nothing in the designed look.
class AllocationLook : public QObject
{
public:
    /// @p frame owns the object.
    explicit AllocationLook(TfraFundAllocation &frame);
    ~AllocationLook() override;

    /// The remainder that the bar shows in place of the frame's own, in rand and percent.
    void ShowRemainder(Currency amount, Currency percent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class State { Left, Done, TooMuch };
    struct Remainder {
        Currency amount;
        Currency percent;
        State state = State::Left;
    };

    void follow();
    void enter();
    void leave();
    void fit();
    void fitStatus();
    void arrange();
    void showCaptions(bool show);
    int widthWithCaptions() const;
    void refresh();
    void paintFrame();
    void paintRemainder(TPanel &panel, bool last) const;
    Remainder remainder() const;
    QString sentence(const Remainder &remainder) const;

    TfraFundAllocation &m_frame;
    QPointer<QBoxLayout> m_top; ///< caption and commands
    QPointer<SplitBar> m_bar;
    QPointer<QLabel> m_sentence;
    std::optional<Remainder> m_ofHost;
    State m_state = State::Left;
    Room m_room = Room::Enough;
    bool m_captions = true; ///< whether the commands have captions beside their pictures
    bool m_applied = false;
};

} // namespace Zel
