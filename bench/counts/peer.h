// The rows of the peer: the same work, done with a JSON library and the standard library's string
// conversion, as one would without this library.
#pragma once

namespace counts {

void RunPeer();

}  // namespace counts
