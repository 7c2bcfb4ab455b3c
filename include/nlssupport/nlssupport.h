/* SPDX-License-Identifier: MIT */
/**
 * @file nlssupport.h
 * @brief The whole library in one include: every module header and the version.
 *
 * `#include <nlssupport/nlssupport.h>` is the same as including each of errlib.h, memmgr.h,
 * ianacs.h, koranls.h, glib.h, convlib.h and version.h from the `nlssupport/` directory. Every
 * public name carries its module's prefix, so the umbrella brings in nothing unprefixed.
 */
#ifndef NLSSUPPORT_H
#define NLSSUPPORT_H

#include <nlssupport/version.h>

#include <nlssupport/errlib.h>
#include <nlssupport/memmgr.h>

#include <nlssupport/ianacs.h>
#include <nlssupport/koranls.h>

#include <nlssupport/convlib.h>
#include <nlssupport/glib.h>

#endif /* NLSSUPPORT_H */
