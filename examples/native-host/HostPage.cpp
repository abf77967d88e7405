#include "HostPage.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <type_traits>

namespace
{
// name, group type, group, term in months
constexpr const char *fields[] = {"FundID:integer",      "FundName:string",  "GroupTypeID:integer",
                                  "FundGroupID:integer", "FundTerm:integer", "AllowAsGuarantee:boolean"};
constexpr std::size_t fieldCount = std::size(fields);
constexpr const char *catalogue[][fieldCount] = {{"1", "Opal Balanced", "2", "1", "0", "false"},
                                                 {"2", "Opal Equity Growth", "2", "1", "0", "false"},
                                                 {"3", "Opal Money Market", "2", "1", "0", "false"},
                                                 {"4", "World Opal Income", "2", "9", "0", "false"},
                                                 {"5", "Fixed Bond, 5 years", "2", "1", "60", "true"}};
constexpr ZelFund chosen[] = {{1, 0, 0}, {2, 0, 0}, {5, 0, 0}};

// The text of an amount in ten-thousandths, with two decimals.
std::string money(std::int64_t value)
{
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%lld.%02lld", static_cast<long long>(value / 10000),
                  static_cast<long long>(std::llabs(value) % 10000 / 100));
    return text.data();
}
} // namespace

bool HostPage::resolve(const Find &find)
{
    bool complete = true;
    const auto look = [&](auto &function, const char *name) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(find(name));
        if (!function && complete) {
            m_error = std::string("The library has no function ") + name;
            complete = false;
        }
    };
    look(m_package.initialize, "Initialize");
    look(m_package.finalize, "Finalize");
    look(m_package.lastError, "ZelLastError");
    look(m_package.processEvents, "ZelProcessEvents");
    look(m_package.create, "ZelFrameCreate");
    look(m_package.destroy, "ZelFrameDestroy");
    look(m_package.setBounds, "ZelFrameSetBounds");
    look(m_package.show, "ZelFrameShow");
    look(m_package.focus, "ZelFrameFocus");
    look(m_package.setProperty, "ZelFrameSetProperty");
    look(m_package.getProperty, "ZelFrameGetProperty");
    look(m_package.setTable, "ZelFrameSetTable");
    look(m_package.call, "ZelFrameCall");
    look(m_package.setFunds, "ZelFrameSetFunds");
    look(m_package.getFunds, "ZelFrameGetFunds");
    look(m_package.createTable, "ZelTableCreate");
    look(m_package.setFields, "ZelTableSetFields");
    look(m_package.addRow, "ZelTableAddRow");
    look(m_package.destroyTable, "ZelTableDestroy");
    return complete;
}

bool HostPage::done(ZelResult result, const char *what)
{
    if (result < 0)
        m_error = std::string(what) + ": " + m_package.lastError();
    return result >= 0;
}

bool HostPage::open(const Find &find, std::uintptr_t parentWindow)
{
    if (!resolve(find) || !done(m_package.initialize(), "Initialize"))
        return false;
    if (done(m_package.create("TfraFundAllocation", parentWindow, &m_frame), "The frame") && fill())
        return true;
    const std::string reason = m_error;
    close();
    m_error = reason;
    return false;
}

bool HostPage::fill()
{
    ZelTable *table = nullptr;
    bool good = done(m_package.createTable(&table), "The table") &&
                done(m_package.setFields(table, fields, fieldCount), "The fields");
    for (const auto &fund : catalogue)
        good = good && done(m_package.addRow(table, fund, fieldCount), "A fund");
    good = good && done(m_package.setProperty(m_frame, "pnlHeaderCaption.caption", "  Initial investment"),
                        "The caption");
    good = good && done(m_package.setProperty(m_frame, "AllocByAmount", "false"), "AllocByAmount");
    good = good && done(m_package.setProperty(m_frame, "InvestmentAmount", "100000"), "InvestmentAmount");
    good =
        good && done(m_package.setTable(m_frame, "FundsPerProductDataSet", table), "FundsPerProductDataSet");
    good = good && done(m_package.setFunds(m_frame, chosen, std::size(chosen), 1), "The funds");
    good = good && done(m_package.show(m_frame, 1), "Showing the frame");
    m_package.destroyTable(table);
    return good;
}

void HostPage::setBounds(int left, int top, int width, int height)
{
    if (m_frame)
        m_package.setBounds(m_frame, left, top, width, height);
}

void HostPage::focus()
{
    m_package.focus(m_frame);
    m_package.call(m_frame, "FundGrid.setFocus", nullptr, 0, nullptr, 0, nullptr);
}

void HostPage::poll()
{
    std::array<char, 64> text{};
    if (!m_frame ||
        m_package.getProperty(m_frame, "RemainingPercent", text.data(), text.size(), nullptr) < 0 ||
        m_remaining == text.data())
        return;
    m_remaining = text.data();
    std::printf("remaining %s\n", m_remaining.c_str());
    std::fflush(stdout);
}

void HostPage::processEvents(int milliseconds)
{
    m_package.processEvents(milliseconds);
}

void HostPage::printFunds()
{
    std::array<ZelFund, std::size(chosen)> funds{};
    std::size_t count = 0;
    if (!done(m_package.getFunds(m_frame, funds.data(), funds.size(), &count), "Reading the funds back")) {
        std::printf("%s\n", m_error.c_str());
        return;
    }
    for (std::size_t i = 0; i < count; ++i)
        std::printf("fund %d amount %s percent %s\n", static_cast<int>(funds[i].FundID),
                    money(funds[i].Amount).c_str(), money(funds[i].Percent).c_str());
    std::fflush(stdout);
}

bool HostPage::close()
{
    const bool destroyed = !m_frame || done(m_package.destroy(m_frame), "Destroying the frame");
    m_frame = nullptr;
    return done(m_package.finalize(), "Finalize") && destroyed;
}
