// The command line of sorvaNIX.
#include "apps/sorvanix/program.h"

int main(int argumentCount, char** arguments) {
  return sorvanix::cli::RunProgram(argumentCount, arguments);
}
