// The testbench of alu.v for simulators with VPI: once a cycle, before the clock rises, $kval_cycle compares the
// outputs of alu with the model's and drives its inputs. It finds both by their names in this module.
module tb;
    reg         clk = 1'b0;
    reg  [3:0]  op;
    reg  [2:0]  ra, rb, rd;
    reg         write;
    reg  [5:0]  shift;
    reg  [39:0] data;
    wire [39:0] result;
    wire        carry, equal, less;
    wire [79:0] accumulator;

    alu alu (
        .clk(clk), .op(op), .ra(ra), .rb(rb), .rd(rd), .write(write), .shift(shift), .data(data),
        .result(result), .carry(carry), .equal(equal), .less(less), .accumulator(accumulator)
    );

    initial forever begin
        $kval_cycle;
        #5 clk = 1'b1;
        #5 clk = 1'b0;
    end
endmodule
