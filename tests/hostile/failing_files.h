// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// libfailing_files.so stands between a program and the C library: it counts each call that changes a file below one
/// directory (open that creates, write, truncate, sync, rename, link, mkdir, close of what was written) and lets the
/// n-th fail. A test walks n upwards from 1 until no call is the n-th any more, and so has had each of them fail once.
///
/// A test in tests/hostile links it and arms it with the functions below. Another program gets it by LD_PRELOAD and
/// the environment:
///   FAILING_FILES_BELOW  the directory
///   FAILING_FILES_AT     which call fails, from 1
///   FAILING_FILES_ERROR  "EIO"; else ENOSPC
///   FAILING_FILES_ON     "1": all calls behind it fail too, as on a disk that stays full
///   FAILING_FILES_TOLD   a file, not below the directory, that is made when the call was met: what failed
extern "C" {
enum { Failing_Files_Kill = 0 };

/// @param at     which call fails, from 1; 0 for none: the calls are only counted
/// @param error  the errno it fails with; Failing_Files_Kill for none: the process is killed before the call
void Failing_Files_Arm(const char *directory, int at, int error, bool on = false);
void Failing_Files_Disarm();
/// Calls since it was armed.
int Failing_Files_Seen();
/// The call that failed and its file, as "write /x/y"; "" before that.
const char *Failing_Files_Met();
}
