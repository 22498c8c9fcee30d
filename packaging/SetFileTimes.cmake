# CPack runs this script after it has installed the files into its own folder and before it makes the archive. The
# script sets the times of all files to SOURCE_DATE_EPOCH, the time of the commit, so that the same commit gives the
# same package.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date @$ENV{SOURCE_DATE_EPOCH} {} +
    COMMAND_ERROR_IS_FATAL ANY)
endif()
