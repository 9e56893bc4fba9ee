#include "run.h"

int main(int argc, char** argv) {
    return depcompare::run(argc, argv);
}
