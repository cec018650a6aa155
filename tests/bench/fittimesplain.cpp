#include "tests/bench/fittimes.h"

int main()
{
    return bench::printFitTimes([] {}) ? 0 : 1;
}
