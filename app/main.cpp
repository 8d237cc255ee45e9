#include "app/program.h"

int main(int argc, char** argv) {
  return svcinst::run_program(argc, argv);
}
