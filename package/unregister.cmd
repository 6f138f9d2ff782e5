@echo off
rem unregister [user]
rem   Takes back what register has written: for the machine and the current user, or with "user" for the user alone.
setlocal
set "here=%~dp0"
set how=
set parts=HKLM HKCU
if "%~1"=="" goto go
if /i not "%~1"=="user" echo usage: unregister [user]
if /i not "%~1"=="user" exit /b 2
set how=/n /i:user
set parts=HKCU
:go
set tools=
if exist "%SystemRoot%\@TAVIO_SYSTEM_FOLDER@\regsvr32.exe" set "tools=%SystemRoot%\@TAVIO_SYSTEM_FOLDER@\"
call :look
if defined found goto unregister
echo Nothing of this package was registered.
exit /b 0

:unregister
set failed=
for %%d in (TavioCompanion.dll TavioClassBillAction.dll DevPlatform.dll Vexo10.dll) do call :server %%d
call :look
if defined found echo Still registered in %found%. HKLM is the machine's part: it takes an administrator.
if defined found exit /b 1
if defined failed exit /b 1
echo Unregistered.
exit /b 0

rem look: sets "found" to the parts of the registry where a class of the package is registered.
:look
set found=
for %%p in (%parts%) do call :part %%p
exit /b 0
:part
set its=
for %%c in (@TAVIO_LIBRARY_CLASS@ @TAVIO_COMPANION_CLASS@ @TAVIO_PLATFORM_CLASS@ @TAVIO_CONTAINERS_CLASS@) do call :class %1 %%c
if defined its set found=%found% %1
exit /b 0
:class
"%tools%reg" query %1\Software\Classes\CLSID\%2 >nul 2>nul
if not errorlevel 1 set its=1
exit /b 0

rem server <file>: unregisters it.
:server
"%tools%regsvr32" /s /u %how% "%here%%1"
set code=%errorlevel%
if %code%==0 exit /b 0
set failed=1
if %code%==3 echo %1 could not be loaded: the file, or one that it needs, is missing or is not for this Windows.
if %code%==4 echo %1 cannot be unregistered: it has no entry for that, and is not this package's file.
if %code%==5 echo %1 could not be unregistered: the registry could not be written.
if %code% geq 3 if %code% leq 5 exit /b 0
echo %1 was not unregistered: regsvr32 ended with the exit code %code%.
exit /b 0
