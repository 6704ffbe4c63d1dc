#include "orobasictypes/binio.h"

constinit BinIO_Scrambler* binio::scrambler = nullptr;

void InstallScrambler(BinIO_Scrambler* scrambler) {
  if (scrambler == binio::scrambler) return;
  delete binio::scrambler;
  binio::scrambler = scrambler;
}
