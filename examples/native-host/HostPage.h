#pragma once

#include "package/ZelCommonFramesC.h"

#include <cstdint>
#include <functional>
#include <string>

/// An allocation frame on a page of a host that is written without Qt. It finds the package's functions by
/// name in the loaded library and uses nothing else. The class is the same on every system; the hosts in the
/// neighbouring folders add a window and a message loop.
class HostPage
{
public:
    /// Finds a function of the loaded library by name; nullptr when there is none.
    using Find = std::function<void *(const char *name)>;

    /// Starts the package and creates the frame in the parent window, with three funds of a small catalogue
    /// and an amount to allocate by percent. On failure it frees everything, and error() has the reason.
    bool open(const Find &find, std::uintptr_t parentWindow);
    void setBounds(int left, int top, int width, int height);
    /// Gives the grid the keyboard focus.
    void focus();
    /// Prints the remainder when it has changed. Call it regularly while the window is open.
    void poll();
    /// For a message loop that does not serve the frames itself.
    void processEvents(int milliseconds);
    /// Whether the whole amount is allocated.
    bool isComplete() const { return m_remaining == "0"; }
    /// Prints the funds with their current amounts.
    void printFunds();
    /// Destroys the frame and stops the package; the library can then be unloaded.
    bool close();

    const std::string &error() const { return m_error; }

private:
    struct Functions {
        decltype(&::Initialize) initialize;
        decltype(&::Finalize) finalize;
        decltype(&ZelLastError) lastError;
        decltype(&ZelProcessEvents) processEvents;
        decltype(&ZelFrameCreate) create;
        decltype(&ZelFrameDestroy) destroy;
        decltype(&ZelFrameSetBounds) setBounds;
        decltype(&ZelFrameShow) show;
        decltype(&ZelFrameFocus) focus;
        decltype(&ZelFrameSetProperty) setProperty;
        decltype(&ZelFrameGetProperty) getProperty;
        decltype(&ZelFrameSetTable) setTable;
        decltype(&ZelFrameCall) call;
        decltype(&ZelFrameSetFunds) setFunds;
        decltype(&ZelFrameGetFunds) getFunds;
        decltype(&ZelTableCreate) createTable;
        decltype(&ZelTableSetFields) setFields;
        decltype(&ZelTableAddRow) addRow;
        decltype(&ZelTableDestroy) destroyTable;
    };

    bool resolve(const Find &find);
    bool done(ZelResult result, const char *what);
    bool fill();

    Functions m_package{};
    ZelFrame *m_frame = nullptr;
    std::string m_remaining;
    std::string m_error;
};
