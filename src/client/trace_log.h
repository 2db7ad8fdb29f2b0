// The lines of the trace log that an entry point writes.
//
// Knows    the shape of a call line and a result line.
// Not      when they are written (entry_point), how the log is opened and closed (StartOlhLog, CloseOlhLog).
// Owns     the open log.
// For      entry_point and the version entry point.
#ifndef OLH_CLIENT_TRACE_LOG_H
#define OLH_CLIENT_TRACE_LOG_H

// NAME( "arg1", "arg2", "arg3" ); up to the first argument that is null or empty. Nothing is escaped.
void OlhLogHelp(const char* name, const char* arg1, const char* arg2, const char* arg3) noexcept;

// NAME returned CODE
void OlhLogReturn(const char* name, int code) noexcept;

#endif
