# Run by CPack between installing into its own folder and packing that: all files get the time of the commit, which
# SOURCE_DATE_EPOCH has, so that the same commit gives the same package.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date @$ENV{SOURCE_DATE_EPOCH} {} +
    COMMAND_ERROR_IS_FATAL ANY)
endif()
