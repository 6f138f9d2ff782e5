@echo off
rem register [user] [platform]
rem   Registers the library and, where the platform's own are not installed, the containers: for the machine, which
rem   needs an administrator, or with "user" for the current user.
rem   With "platform" the development platform too, for machines without the real one.
setlocal
set how=
set platform=
:argument
if "%~1"=="" goto go
if /i "%~1"=="user" (
  set how=/n /i:user
) else if /i "%~1"=="platform" (
  set platform=1
) else (
  echo usage: register [user] [platform]
  exit /b 2
)
shift
goto argument

:go
cd /d "%~dp0"
rem On a 64-bit Windows the 32-bit tool has a folder of its own.
set tool=regsvr32
if exist "%SystemRoot%\@TAVIO_SYSTEM_FOLDER@\regsvr32.exe" set tool="%SystemRoot%\@TAVIO_SYSTEM_FOLDER@\regsvr32.exe"
%tool% /s %how% Vexo10.dll
if errorlevel 1 echo The containers of another maker are installed; they are used.
if not defined platform goto library
%tool% /s %how% DevPlatform.dll
if errorlevel 1 (
  echo The development platform was not registered: components of the real one are installed.
  exit /b 1
)
:library
%tool% /s %how% TavioClassBillAction.dll
if errorlevel 1 (
  echo TavioClassBillAction.dll was not registered.
  exit /b 1
)
echo Registered.
