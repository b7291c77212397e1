// The studio of sorvaNIX.
#include "apps/studio/program/studio.h"

int main(int argumentCount, char** arguments) {
  return sorvanix::studio::RunStudio(argumentCount, arguments);
}
