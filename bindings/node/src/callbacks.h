// The library's callbacks: each copies what it is handed into a letter, and waits for nobody.
#pragma once

#include "KorvuTabletSettingsAPI.h"

namespace korvu_node {

// All 41. Their context is the address of the letters.
KorvuISD_Callbacks CallbacksIntoMailbox();

// For manual requests, whose context is the number of the request.
void KORVUISD_CALL OnManualReply(void* context, const wchar_t* text, size_t* partLengths,
                                 size_t partCount) noexcept;

}  // namespace korvu_node
