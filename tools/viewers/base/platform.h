// The kind of system this is, and what systems do in different ways.
//
// Knows    what macOS and FreeBSD lack of Linux; what is written for them has not been tried there.
// For      choice, browser_reach, display, files and child.
#ifndef OLH_TOOLS_VIEWERS_PLATFORM_H
#define OLH_TOOLS_VIEWERS_PLATFORM_H

#include <csignal>
#include <ctime>
#include <string>

#ifndef __linux__
extern "C" char** environ;  // in no header of some systems
#endif

namespace olh_viewers {

// Whether this is Linux inside of Windows, and whether a program there belongs to Windows.
bool is_in_wsl();
bool is_of_windows(const std::string& program);

#ifdef __APPLE__
inline constexpr bool kIsMacos = true;
#else
inline constexpr bool kIsMacos = false;
#endif

// A path of this program's file; "" when the system does not tell.
std::string this_program();

// A pipe whose ends no started program gets.
bool make_pipe(int (&ends)[2]);

// Waits until the signal, which is blocked, or for that time; may return sooner.
void wait_for_signal(const sigset_t& signal, const timespec& time);

}  // namespace olh_viewers

#endif
