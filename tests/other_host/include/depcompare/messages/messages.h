#pragma once
// The texts of this host.

namespace depcompare::messages {

void registerMessages();

}  // namespace depcompare::messages
