set(TOLVEK_SYSTEM_SOURCES
  child_process.cpp
  child_program.cpp
  command_line.cpp
  file_lock.cpp
  file_operations.cpp
  mapped_file.cpp
  open_file.cpp
  private_folder.cpp
  process.cpp
  process_list.cpp
  process_tree.cpp
  program_folder.cpp
  registry.cpp
  shared_library.cpp
  single_instance.cpp
  start_program.cpp
  system_failure.cpp
  unlink.cpp
  user.cpp
  volumes.cpp
  wide_path.cpp)

set(TOLVEK_DESKTOP_SOURCES desktop.cpp keyboard.cpp process_windows.cpp)
set(TOLVEK_DESKTOP_LINKS imm32)

set(TOLVEK_CHILD_SOURCES captured_errors.cpp child_start.cpp lock_down.cpp mapped_input.cpp)
set(TOLVEK_CHILD_LINKS tolvek_system)
