// Sends the message of an action to chosen users, in place of its own recipients:  SendToChosen <user ID>...
// Compiled by the C# compiler that comes with Windows, for the bitness of the library, and run from the same folder:
//   %WINDIR%\Microsoft.NET\Framework64\v4.0.30319\csc /platform:x64 SendToChosen.cs
//   %WINDIR%\Microsoft.NET\Framework\v4.0.30319\csc /platform:x86 SendToChosen.cs
using System;

static class SendToChosen
{
    const int ClassTypeId = 1005, BillId = 5001, Scenario = 8;
    const string ActionCode = "MultiCheck";

    // The objects live in the thread that makes them, which must be an apartment of its own.
    [STAThread]
    static int Main(string[] users)
    {
        if (users.Length == 0)
        {
            Console.Error.WriteLine("usage: SendToChosen <user ID>...");
            return 2;
        }
        try
        {
            Send(Array.ConvertAll(users, int.Parse));
            Console.WriteLine("Done.");
            return 0;
        }
        catch (Exception error)
        {
            Console.Error.WriteLine("Failed: " + error.Message);
            return 1;
        }
    }

    // Members of a dynamic object are looked up by name when they are called: no interop assembly is needed.
    static dynamic Create(string progId)
    {
        return Activator.CreateInstance(Type.GetTypeFromProgID(progId, true));
    }

    // An operation that fails tells the user itself, and the host by its answer.
    static void Require(bool done, string what)
    {
        if (!done) throw new InvalidOperationException(what);
    }

    static void Send(int[] users)
    {
        string props = Create("TavioSharedProps.PropStore").GetProperty(0, "PropsString");
        dynamic info = Create("TavioMClass.ClassInfo");
        dynamic actions = Create("TavioClassBillAction.BillActions");
        actions.ClassTypeID = ClassTypeId;
        actions.Initialize();
        dynamic package = actions.GetMessage(ActionCode, Scenario);
        Require((object)package != null, "The action has no message in that scenario.");

        dynamic message = Create("TavioClassBillAction.Message");
        message.ClassTypeID = ClassTypeId;
        message.ClassType = info.GetClassType(props, ClassTypeId);
        message.TableInfo = info.GetTableInfo(props, ClassTypeId);
        message.RefreshVariableList();
        Require(message.SetMessage(package), "The message was not taken.");
        Require(message.RefreshVariableValue(info.GetBillData(props, ClassTypeId, BillId)), "The bill was not read.");

        // The stored message keeps its recipients, unless the actions are saved after this.
        message.RemoveAllUsers();
        foreach (int user in users) Require(message.AddUser(user), "User " + user + " was not added.");
        Require(message.SendMessage(), "The message was not sent.");
        Console.WriteLine("Sent to " + users.Length + " chosen user(s), and to those whom fields of the bill name.");
    }
}
