# cmake -DIN=general_weights.tsv -DOUT=general_weights.inc -P general_weights.cmake
#
# Writes one line WEIGHT(code, type, primary, secondary, flag) per character, with all
# numbers in hexadecimal without a prefix. The size of a kana (s, n) becomes the code that
# the key uses for it.
file(READ "${IN}" text)
string(REGEX REPLACE "^#[^\n]*\n" "" text "${text}")
string(REGEX REPLACE "\ts\n" "\t2\n" text "${text}")
string(REGEX REPLACE "\tn\n" "\t3\n" text "${text}")
string(REGEX REPLACE "([0-9A-F]+)\t([SIKMWRX])\t([0-9A-F]*)\t([0-9A-F]*)\t([0-9A-F]*)\n"
       "WEIGHT(\\1, \\2, \\3, \\4, \\5)\n" text "${text}")
if(text MATCHES "\t")
  message(FATAL_ERROR "a line of ${IN} isn't understood")
endif()
file(WRITE "${OUT}" "${text}")
