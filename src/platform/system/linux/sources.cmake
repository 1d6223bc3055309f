set(TOLVEK_SYSTEM_SOURCES
  child_program.cpp
  emulated_path.cpp
  file_lock.cpp
  file_operations.cpp
  mapped_file.cpp
  mount_table.cpp
  open_file.cpp
  private_folder.cpp
  process.cpp
  process_folder.cpp
  program_folder.cpp
  registry.cpp
  shared_library.cpp
  single_instance.cpp
  volumes.cpp
  start_program.cpp)

find_package(X11 REQUIRED COMPONENTS Xtst)
set(TOLVEK_DESKTOP_SOURCES desktop.cpp x11_keyboard.cpp x11_screen.cpp x11_windows.cpp)
set(TOLVEK_DESKTOP_LINKS X11::X11 X11::Xtst)

find_package(PkgConfig REQUIRED)
pkg_check_modules(libseccomp REQUIRED IMPORTED_TARGET libseccomp)
set(TOLVEK_CHILD_SOURCES captured_errors.cpp child_start.cpp lock_down.cpp mapped_input.cpp)
set(TOLVEK_CHILD_LINKS PkgConfig::libseccomp)
