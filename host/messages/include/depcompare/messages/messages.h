#pragma once
// The texts that comparisons show, in the languages that the program speaks.
#include <depcompare/messages/export.h>

namespace depcompare::messages {

/// Registers the texts with the message catalog. Texts that are registered already stay, so a call
/// may be repeated, and overrides may come before or after it.
///
/// Threads: safe from any thread.
DEPCOMPARE_MESSAGES_EXPORT void registerMessages();

}  // namespace depcompare::messages
