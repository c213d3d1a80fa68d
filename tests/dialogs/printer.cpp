#include "printer.h"

#include <windows.h>

#include <winspool.h>

#include <fstream>

#include "support/temporary_folder.h"

namespace tornby::testing {
namespace {

char printer_name[] = "Tornby test printer";
char driver_name[] = "Tornby test driver";

/// The printer's description: one that Wine's spooler library carries.
bool write_description(const std::string& path) {
  const HMODULE spooler = ::LoadLibraryA("winspool.drv");
  const HRSRC resource = spooler ? ::FindResourceA(spooler, MAKEINTRESOURCEA(1), "PPDFILE") : nullptr;
  const HGLOBAL data = resource ? ::LoadResource(spooler, resource) : nullptr;
  if (!data) return false;
  std::ofstream out(path, std::ios::binary);
  out.write(static_cast<const char*>(::LockResource(data)),
            static_cast<std::streamsize>(::SizeofResource(spooler, resource)));
  return static_cast<bool>(out);
}

bool add_driver(std::string description) {
  char environment[] = "Windows NT x86";
  char file[] = "wineps.drv";
  DRIVER_INFO_3A driver{};
  driver.cVersion = 3;
  driver.pName = driver_name;
  driver.pEnvironment = sizeof(void*) == 4 ? environment : nullptr;
  driver.pDriverPath = driver.pConfigFile = file;
  driver.pDataFile = description.data();
  return ::AddPrinterDriverExA(nullptr, 3, reinterpret_cast<BYTE*>(&driver), APD_COPY_NEW_FILES | 0x10) != 0;
}

bool add_printer() {
  char port[] = "LPT1:";
  char processor[] = "WinPrint";
  char type[] = "RAW";
  PRINTER_INFO_2A printer{};
  printer.pPrinterName = printer_name;
  printer.pDriverName = driver_name;
  printer.pPortName = port;
  printer.pPrintProcessor = processor;
  printer.pDatatype = type;
  const HANDLE handle = ::AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
  if (!handle) return false;
  ::ClosePrinter(handle);
  return ::SetDefaultPrinterA(printer_name) != 0;
}

}  // namespace

bool TestPrinter::add() {
  const TemporaryFolder folder;
  const std::string description = (folder.path() / "test.ppd").string();
  return write_description(description) && add_driver(description) && add_printer();
}

void TestPrinter::remove() {
  PRINTER_DEFAULTSA access{};
  access.DesiredAccess = PRINTER_ALL_ACCESS;
  HANDLE handle = nullptr;
  if (!::OpenPrinterA(printer_name, &handle, &access)) return;
  ::DeletePrinter(handle);
  ::ClosePrinter(handle);
}

}  // namespace tornby::testing
