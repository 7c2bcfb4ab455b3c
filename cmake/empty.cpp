/* SPDX-License-Identifier: MIT */
// An empty translation unit for a module that has no sources yet.
