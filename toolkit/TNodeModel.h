#pragma once

/// @file
/// Includes the headers of the declarations that this header had, for hosts that include it.

#include "toolkit/ListModel.h"
#include "toolkit/TListItems.h"
#include "toolkit/TTreeNodes.h"
#include "toolkit/TreeModel.h"
