// A picture of a run: one self-contained HTML page with SVG charts drawn from the resource
// log that utl_ResourceMonitor writes (*.use) and, if there is one, the ioTotal report of the
// i/o tracker. No script and nothing fetched: the page opens in any browser as it is.
//
//   std::string page = RunPicturePage(logText, ioTotalText, "job_example.use");
//
// Lines that don't read as the library writes them are skipped and counted on the page;
// nothing is thrown for bad input.
#ifndef RUN_PICTURE_PAGE_H
#define RUN_PICTURE_PAGE_H

#include <string>

// `resourceLog` and `ioTotal` are the files' contents (ioTotal may be empty); `title` heads
// the page.
std::string RunPicturePage(const std::string& resourceLog, const std::string& ioTotal,
                           const std::string& title);

#endif  // RUN_PICTURE_PAGE_H
