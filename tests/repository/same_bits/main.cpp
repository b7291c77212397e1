// Writes what the kit, the noise types and the shaders give for thousands of fixed inputs, as bits.
//
// Run by every build that must agree; same_bits_test.py compares what they write.
#include <fstream>
#include <iostream>

#include "tests/repository/same_bits/recorder.h"

int main(int argumentCount, char** arguments) {
  using namespace sorvanix::test;
  if (argumentCount != 2) {
    std::cerr << "usage: same_bits FILE\n";
    return 2;
  }
  Recorder recorder;
  RecordKit(recorder);
  RecordNoise(recorder);
  RecordShaders(recorder);
  std::ofstream file(arguments[1]);
  recorder.Write(file);
  return file.flush() ? 0 : 1;
}
