#pragma once

// Absolute paths of what the tests and benchmarks start and read, as the build has put them.

namespace velmo {

extern const char* const velmoProgram;
/// What launchers are told of it.
extern const char* const desktopEntry;
extern const char* const iconLoaderProgram;
extern const char* const bareMoverProgram;
/// A program with tray icons of Qt.
extern const char* const qtTrayProgram;
/// What counts the memory that a program uses, to be loaded into it.
extern const char* const heapCounter;
/// The folder of other programs with tray icons, which are scripts.
extern const char* const clientScripts;
/// The folder of what the tests of the Linux services bring along.
extern const char* const linuxTestFiles;

}  // namespace velmo
