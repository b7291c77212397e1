// A library must have a source: the headers that the tests share are listed in the build.
