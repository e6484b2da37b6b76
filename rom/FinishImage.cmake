# Stops the build when FILE is not SIZE bytes long: a ROM that outgrew its chip. The linker's mark of a
# program that can be started is taken off.
file(SIZE ${FILE} size)
if(NOT size EQUAL SIZE)
  message(FATAL_ERROR "${FILE}: ${size} bytes, must be ${SIZE}")
endif()
file(CHMOD ${FILE} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
