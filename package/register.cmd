@echo off
rem register [user] [platform]
rem   Registers the library, the companion and, if the platform's own are not installed, the containers: for the machine,
rem   or with "user", and if there are no administrator's rights, for the current user.
rem   With "platform" the development platform too, for machines without the real one.
setlocal
set "here=%~dp0"
set part=HKLM
set platform=
set twice=
:argument
if "%~1"=="" goto go
if /i "%~1"=="user" (
  set part=HKCU
) else if /i "%~1"=="platform" (
  set platform=1
) else (
  echo usage: register [user] [platform]
  exit /b 2
)
shift
goto argument

:go
rem On a 64-bit Windows the 32-bit tools have a folder of their own.
set tools=
if exist "%SystemRoot%\@TAVIO_SYSTEM_FOLDER@\regsvr32.exe" set "tools=%SystemRoot%\@TAVIO_SYSTEM_FOLDER@\"
if %part%==HKCU goto register
"%tools%reg" add HKLM\Software\Classes /f >nul 2>nul
if not errorlevel 1 goto register
echo There is no right to register for the machine, so this is for the current user.
set part=HKCU

:register
set how=
set place=the machine (HKEY_LOCAL_MACHINE)
set other=HKCU
if %part%==HKLM goto containers
set how=/n /i:user
set place=the current user (HKEY_CURRENT_USER)
set other=HKLM
:containers
call :server Vexo10.dll
if errorlevel 5 goto refused_containers
if errorlevel 1 exit /b 1
call :other Vexo10.dll @TAVIO_CONTAINERS_CLASS@
:platform
if not defined platform goto library
call :server DevPlatform.dll
if errorlevel 5 goto refused_platform
if errorlevel 1 exit /b 1
call :other DevPlatform.dll @TAVIO_PLATFORM_CLASS@
call :driver
:library
call :own TavioClassBillAction.dll @TAVIO_LIBRARY_CLASS@
if errorlevel 1 exit /b 1
call :own TavioCompanion.dll @TAVIO_COMPANION_CLASS@
if errorlevel 1 exit /b 1
echo Registered for %place%.
if not defined twice exit /b 0
echo Programs of the current user take what is registered for the user, those that run as administrator what is
echo registered for the machine. "unregister" takes back both, "unregister user" the user's.
exit /b 0

:refused_containers
set strangers=
@TAVIO_CONTAINERS_STRANGERS@
if not defined strangers goto not_written
echo These containers are installed already, and are used.
goto platform

:refused_platform
set strangers=
@TAVIO_PLATFORM_STRANGERS@
if not defined strangers goto not_written
echo These are somebody else's components, probably the real platform's. The development platform is not registered
echo beside them, because it would keep real mail from leaving.
exit /b 1

:not_written
echo The registry could not be written.
exit /b 1

rem own <file> <one of its classes>: registers what nobody else can have registered.
:own
call :server %1
if errorlevel 5 echo The registry could not be written.
if errorlevel 1 exit /b 1
goto other

rem server <file>: registers it; regsvr32's exit code comes back.
:server
"%tools%regsvr32" /s %how% "%here%%1"
set code=%errorlevel%
if %code%==0 exit /b 0
if %code%==3 echo %1 could not be loaded: the file, or one that it needs, is missing or is not for this Windows.
if %code%==4 echo %1 cannot be registered: it has no entry for that, and is not this package's file.
if %code%==5 echo %1 refused to be registered.
if %code% geq 3 if %code% leq 5 exit /b %code%
echo %1 was not registered: regsvr32 ended with the exit code %code%.
exit /b 1

rem stranger <ProgID> <its class here>: names it if it leads to another class.
:stranger
"%tools%reg" query HKCR\%1\CLSID >nul 2>nul
if errorlevel 1 exit /b 0
"%tools%reg" query HKCR\%1\CLSID /ve | find "%2" >nul
if not errorlevel 1 exit /b 0
echo   %1
set strangers=1
exit /b 0

rem other <file> <one of its classes>: warns if the other part of the registry has it too, and from which folder.
:other
"%tools%reg" query %other%\Software\Classes\CLSID\%2\InprocServer32 >nul 2>nul
if errorlevel 1 exit /b 0
set twice=1
echo Warning: the other part of the registry has %1 as well:
"%tools%reg" query %other%\Software\Classes\CLSID\%2\InprocServer32 /ve
exit /b 0

rem driver: warns if the database of the development platform has no driver. Wine has those of the system below it.
:driver
if defined TAVIO_DEV_DATABASE exit /b 0
if exist "%SystemRoot%\System32\winecfg.exe" exit /b 0
"%tools%reg" query "HKLM\Software\ODBC\ODBCINST.INI\SQLite3 ODBC Driver" >nul 2>nul
if not errorlevel 1 exit /b 0
echo Warning: there is no ODBC driver "SQLite3 ODBC Driver" for @TAVIO_ARCHITECTURE@ programs. The development platform
echo needs it, or another database in TAVIO_DEV_DATABASE: see docs\platform.md.
exit /b 0
