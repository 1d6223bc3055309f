# Run by the tests: fails unless FILE was built with the hardening options of the
# compiler and the linker.
foreach(view -hld --dyn-syms)
  execute_process(COMMAND readelf -W ${view} "${FILE}" OUTPUT_VARIABLE text
                  ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
  string(APPEND all "${text}")
endforeach()

function(require what pattern)
  if(NOT all MATCHES "${pattern}")
    message(SEND_ERROR "${FILE}: ${what} is missing")
  endif()
endfunction()

require("code at any address" "Type: +DYN")
require("a stack without code" "GNU_STACK[^\n]* RW ")
require("read-only relocations" "GNU_RELRO")
require("binding at the start" "BIND_NOW|Flags:[^\n]*NOW")
require("the stack protector" "__stack_chk_fail")
