// korvu-count: does what is charged to the rows of the table, under callgrind; scripts/count.sh
// runs it. For each row it prints how often memory was allocated and the system called.

#include "library.h"
#include "peer.h"

int main() {
  counts::RunPeer();
  counts::RunLibrary();
}
