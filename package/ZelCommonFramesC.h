#ifndef ZELCOMMONFRAMESC_H
#define ZELCOMMONFRAMESC_H

/** @file
   The package for hosts that are not written with Qt, or not in C++: plain functions over opaque handles, the
   same on every system. All texts are UTF-8 and zero-terminated; a text that is not UTF-8 causes
   ZEL_BAD_VALUE.

   Call Initialize() first. The first frame creates a Qt application object, unless the host has one;
   Finalize() destroys it. Make all calls on one thread, the thread whose message loop serves the windows.

   Every function returns a ZelResult: 0, or a negative number for the kind of failure. A failure changes
   nothing unless the function's comment says otherwise. It is never an exception or a crash. ZelLastError()
   returns its reason as text. */

#include "export/zel_commonframes_export.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The result of every function: 0, or one of the negative numbers below. */
typedef int32_t ZelResult;

/** The values of a ZelResult. */
enum {
    ZEL_OK = 0,                   /**< the call was carried out */
    ZEL_FAILED = -1,              /**< the operation itself failed */
    ZEL_NOT_INITIALIZED = -2,     /**< before Initialize or after Finalize */
    ZEL_ALREADY_INITIALIZED = -3, /**< Initialize was called before */
    ZEL_NO_DISPLAY = -4,          /**< there is no display, or Qt's platform plugin is missing */
    ZEL_NO_CLASS = -5,            /**< the package has no class of that name */
    ZEL_NO_WINDOW = -6,           /**< the parent window does not exist */
    ZEL_NO_HANDLE = -7,           /**< the handle is not that of a living frame or table */
    ZEL_NO_NAME = -8,             /**< no component, property or operation of that name */
    ZEL_BAD_VALUE = -9,         /**< a null pointer, or a text that is not UTF-8 or not of the value's type */
    ZEL_BUFFER_TOO_SMALL = -10, /**< the required length was returned */
    ZEL_FRAMES_ALIVE = -11,     /**< Finalize was called while frames were alive */
    ZEL_WRONG_THREAD = -12      /**< not the thread of the first frame */
};

/** A frame or form of the package. */
typedef struct ZelFrame ZelFrame;
/** A table of rows for a frame, with typed fields. */
typedef struct ZelTable ZelTable;

/** One fund of an allocation. Both amounts are in ten-thousandths: 1000.00 rand is 10000000, 33.33 % is
 * 333300. */
typedef struct ZelFund {
    int32_t FundID;  /**< the fund's number in the catalogue */
    int64_t Amount;  /**< rand */
    int64_t Percent; /**< percent of the investment */
} ZelFund;

/** Supplies the rows that a frame requests from a provider. names and values are the count parameters of the
   request. rows is an empty table that belongs to the package; the function sets its fields with
   ZelTableSetFields and adds rows with ZelTableAddRow. A negative result means that the provider failed. No
   frame can be destroyed while the function runs. */
typedef ZelResult (*ZelProvider)(void *context, const char *const *names, const char *const *values,
                                 size_t count, ZelTable *rows);

/* ---- the package ---- */

/** Starts the package. ZEL_ALREADY_INITIALIZED when it is already started. */
ZEL_COMMONFRAMES_EXPORT ZelResult Initialize(void);
/** Stops the package and frees remaining tables; the library can then be unloaded. ZEL_FRAMES_ALIVE while a
   frame or form is alive: one from ZelFrameCreate, a dialog that such a frame opened, or one created in C++.
   ZEL_FAILED inside ZelProcessEvents. */
ZEL_COMMONFRAMES_EXPORT ZelResult Finalize(void);
/** The reason of the last failure on this thread; empty before the first failure. Valid until the next
   failure. */
ZEL_COMMONFRAMES_EXPORT const char *ZelLastError(void);
/** Processes the frames' pending events; when there are none, waits up to that many milliseconds for one. On
   Windows the host's own message loop does this. A host on X11 calls this function in its loop, about fifty
   times a second. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelProcessEvents(int32_t milliseconds);
/** Sets the function that supplies the rows of a provider name (such as "dspFundMessage"). It is called with
   context. A null pointer removes the provider. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelSetProvider(const char *name, ZelProvider provider, void *context);

/* ---- frames ---- */

/** Creates a hidden frame or form by class name. parentWindow is the number (HWND, X11 window id) of the
   window that will contain the frame, or 0 for a top-level window. Destroy the frame with ZelFrameDestroy,
   even when its parent window was destroyed first. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameCreate(const char *className, uintptr_t parentWindow,
                                                 ZelFrame **frame);
/** Destroys a frame, whether its parent window exists or not. ZEL_FAILED while an operation of the frame or a
   provider is running. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameDestroy(ZelFrame *frame);
/** Sets the position in the parent window and the size, in physical pixels. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetBounds(ZelFrame *frame, int32_t left, int32_t top, int32_t width,
                                                    int32_t height);
/** Shows (1) or hides (0) the frame. A frame initialises itself after its first paint. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameShow(ZelFrame *frame, int32_t visible);
/** Gives the frame the keyboard focus. A click into the frame does the same. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameFocus(ZelFrame *frame);
/** The number of the frame's own window, for the host's layout. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameWindow(ZelFrame *frame, uintptr_t *window);

/** Sets a property of the frame ("InvestmentAmount") or of one of its components ("pnlAmount.caption").
   Booleans are "true" and "false", numbers have "." as the decimal point and no thousands separators,
   enumerations are given by name. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetProperty(ZelFrame *frame, const char *name, const char *value);
/** Writes the property as a zero-terminated text into value, which has size bytes. Writes the length without
   the zero into length unless length is null. With size 0 only the length is written. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameGetProperty(ZelFrame *frame, const char *name, char *value,
                                                      size_t size, size_t *length);
/** Sets a dataset property ("FundsPerProductDataSet") to the rows of a table. The caller keeps ownership of
   the table and may free it after the call. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetTable(ZelFrame *frame, const char *name, ZelTable *table);
/** Calls an operation of the frame ("ResetValues") or of one of its components
   ("fraFundToolBar.sbtAllocateAmount.click"). Arguments are texts in the form of property values. The return
   value of the operation is written as in ZelFrameGetProperty; result and length may be null. When it does
   not fit (ZEL_BUFFER_TOO_SMALL), it is lost, but the operation was carried out. The result 0 means that the
   operation ran, not that it had an effect: "AddFundIDToList" with a fund that the product does not offer
   returns 0 and adds nothing. Compare the property "FundCount" before and after, or use
   ZelFrameSetAllocation, which returns the rejected funds. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameCall(ZelFrame *frame, const char *operation,
                                               const char *const *arguments, size_t count, char *result,
                                               size_t size, size_t *length);

/** Sets and shows the list of funds of a TfraFundAllocation, for the given product group. Funds that the
   product does not offer are dropped with their amounts, and the result is still 0;
   ZelFrameSetAllocation returns the dropped funds. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetFunds(ZelFrame *frame, const ZelFund *funds, size_t count,
                                                   int32_t productGroup);
/** Writes the frame's funds, in the order of the grid's rows, into funds: at most capacity of them. Writes
   their total number into count. ZEL_BUFFER_TOO_SMALL when there are more than capacity. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameGetFunds(ZelFrame *frame, ZelFund *funds, size_t capacity,
                                                   size_t *count);
/** Sets a stored allocation, as returned by ZelFrameGetFunds, in a TfraFundAllocation. The rows of funds that
   the product does not offer are left out and written into leftOut, in the order given, at most capacity of
   them. Their total number, at most count, is written into leftOutCount unless that is null. leftOut may be
   the same array as funds. ZEL_BUFFER_TOO_SMALL when more than capacity rows were left out; the other funds
   are shown all the same. ZEL_FAILED before "FundsPerProductDataSet" is set; no fund is shown then. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelFrameSetAllocation(ZelFrame *frame, const ZelFund *funds, size_t count,
                                                        int32_t productGroup, ZelFund *leftOut,
                                                        size_t capacity, size_t *leftOutCount);

/* ---- tables ---- */

/** Creates a table without fields. The caller frees it with ZelTableDestroy. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelTableCreate(ZelTable **table);
/** Sets the fields of a table without fields, each as "name:type". The types are integer, largeint, float,
   currency, boolean, date, datetime and string. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelTableSetFields(ZelTable *table, const char *const *fields, size_t count);
/** Adds a row: one text per field; a null pointer means no value. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelTableAddRow(ZelTable *table, const char *const *values, size_t count);
/** Frees a table. */
ZEL_COMMONFRAMES_EXPORT ZelResult ZelTableDestroy(ZelTable *table);

#ifdef __cplusplus
}
#endif

#endif
